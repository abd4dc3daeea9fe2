// SPDX-License-Identifier: GPL-3.0-or-later
// The report's look: light or dark as the reader's screen is, always light on paper.
#ifndef KESTROVA_MEASURE_HTMLSTYLE_H
#define KESTROVA_MEASURE_HTMLSTYLE_H

constexpr const char* htmlStyle = R"css(
:root {
  --page: #fff; --ink: #1b2430; --soft: #5b6775; --rule: #dde2e8; --tile: #f5f7f9;
  --pass: #17703c; --fail: #b3261e; --fail-tint: #fdf0ef; --warn: #8a5a00; --neutral: #5b6775;
  --delivered: #1d62c4; --band: #1d62c440; --lowest: #c2570c; --level: #7a4fb5; --level-tint: #7a4fb52e;
  --gap: #4d5b6b; --gap-tint: #4d5b6b2e; --lost: #b3261e24;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --page: #14181d; --ink: #e4e9ef; --soft: #98a4b2; --rule: #2d353f; --tile: #1c2229;
    --pass: #2f9e5f; --fail: #e0564c; --fail-tint: #34201f; --warn: #e0ac4b; --neutral: #6b7887;
    --delivered: #6ba6f5; --band: #6ba6f54d; --lowest: #f0954a; --level: #b491e6; --level-tint: #b491e633;
    --gap: #aab6c4; --gap-tint: #aab6c433; --lost: #e0564c40;
  }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 15px/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", "DejaVu Sans", sans-serif;
  font-variant-numeric: tabular-nums; -webkit-text-size-adjust: 100%; }
main { max-width: 64rem; margin: 0 auto; padding: 2rem 1.25rem 4rem; }
h1, h2, h3, p, ul, dl, dd, figure { margin: 0; }
a { color: inherit; text-decoration-color: var(--soft); text-underline-offset: .2em; }
small { font-size: .85em; color: var(--soft); font-weight: 400; }
.tool, .when { color: var(--soft); }
h1 { font-size: 1.6rem; line-height: 1.3; font-weight: 600; margin: .35rem 0; }
h2 { font-size: 1.2rem; line-height: 1.4; font-weight: 600; overflow-wrap: anywhere; }
h3 { font-size: .8rem; font-weight: 600; letter-spacing: .06em; text-transform: uppercase; color: var(--soft);
  margin: 1.5rem 0 .5rem; }
.badge { display: inline-block; background: var(--neutral); color: #fff; font-size: .72em; font-weight: 700;
  letter-spacing: .04em; line-height: 1.2; padding: .22em .55em; border-radius: .3em; margin-right: .6em;
  vertical-align: .1em; white-space: nowrap; }
.badge.pass { background: var(--pass); }
.badge.fail { background: var(--fail); }
.notes, .problems, .warnings, .why { padding-left: 1.2rem; margin-top: .6rem; overflow-wrap: anywhere; }
.problems, .broken .mark, .broken td.n, td.broken, .broken dd { color: var(--fail); font-weight: 600; }
section, article { margin-top: 2.5rem; padding-top: 1.25rem; border-top: 1px solid var(--rule); }
section > h2 { margin-bottom: .75rem; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: baseline; padding: .35rem .9rem .35rem 0; font-weight: 400;
  border-bottom: 1px solid var(--rule); }
th:last-child, td:last-child { padding-right: 0; }
thead th { color: var(--soft); font-size: .87rem; vertical-align: bottom; }
.n { text-align: right; white-space: nowrap; }
td .badge { font-size: .75rem; margin: 0; }
.limits td:last-child { width: 34%; }
.overview tbody th { overflow-wrap: anywhere; min-width: 10rem; }
.mark { width: 4.5rem; color: var(--pass); }
.warnings { color: var(--warn); font-weight: 600; }
.facts th { color: var(--soft); width: 11rem; }
.bad td { color: var(--fail); }
.facts td, .events td { overflow-wrap: anywhere; }
.events { table-layout: fixed; }
.events .time { width: 9.5rem; white-space: nowrap; }
.tiles { display: grid; grid-template-columns: repeat(auto-fill, minmax(9.5rem, 1fr)); gap: .5rem; }
.tiles > div { display: flex; flex-direction: column; justify-content: space-between; background: var(--tile); border-radius: .4rem; padding: .55rem .75rem; }
.tiles dt { color: var(--soft); font-size: .87rem; line-height: 1.3; }
.tiles dd { font-size: 1.15rem; }
.tiles b { font-weight: 600; }
.behind { color: var(--soft); font-size: .87rem; }
.behind span { display: inline-block; margin-right: 1.25rem; }
.pair { display: grid; grid-template-columns: repeat(auto-fit, minmax(20rem, 1fr)); column-gap: 2.5rem; }
.course { --gutter: 3.25rem; }
.course + .tiles { margin-top: .75rem; }
.panel { margin-bottom: .9rem; }
figcaption { font-size: .87rem; color: var(--soft); margin-bottom: .3rem; padding-left: var(--gutter); }
figcaption b { color: var(--ink); font-weight: 600; margin-right: 1rem; }
.key { display: inline-block; margin-right: 1rem; white-space: nowrap; }
.key i { display: inline-block; width: 1.1rem; height: 0; border-top: 2px solid; margin-right: .4rem;
  vertical-align: .27em; }
i.delivered { border-color: var(--delivered); }
i.lowest { border-color: var(--lowest); }
i.required { border-color: var(--soft); border-top-style: dashed; }
i.lost { height: .8em; border: 0; background: var(--lost); vertical-align: -.08em; }
.plot { position: relative; margin-left: var(--gutter); height: 4.5rem; }
.tall .plot { height: 11rem; }
.lane { margin-bottom: .35rem; }
.lane .plot { height: .9rem; background: var(--tile); }
.lane figcaption { margin-bottom: .1rem; }
.lane figcaption b { color: var(--fail); margin: 0 0 0 .5rem; }
.plot svg { display: block; width: 100%; height: 100%; overflow: visible; }
.values span { position: absolute; right: 100%; margin-right: .5rem; transform: translateY(50%); font-size: .8rem;
  line-height: 1; color: var(--soft); }
.label { position: absolute; font-size: .75rem; line-height: 1.1; padding-bottom: .1rem; white-space: nowrap;
  text-shadow: 0 0 3px var(--page), 0 0 3px var(--page), 0 0 3px var(--page); }
.label.below { transform: translateY(100%); padding: .1rem 0 0; }
.label b { color: var(--pass); font-weight: 600; }
.label .broken { color: var(--fail); }
.times { position: relative; height: 1.4rem; margin-left: var(--gutter); font-size: .8rem; color: var(--soft); }
.times span { position: absolute; transform: translateX(-50%); white-space: nowrap; }
.times .first { transform: none; }
.times .last { transform: translateX(-100%); }
svg path { fill: none; vector-effect: non-scaling-stroke; stroke-width: 1.5; }
svg .grid { stroke: var(--rule); stroke-width: 1; }
svg .delivered { stroke: var(--delivered); }
svg .delivered-band { fill: var(--band); stroke: var(--delivered); stroke-opacity: .6; stroke-width: 1; }
svg .lowest { stroke: var(--lowest); }
svg .required { stroke: var(--soft); stroke-dasharray: 5 4; }
svg .lost { fill: var(--lost); stroke: var(--lost); stroke-width: 1; }
svg .bound { stroke: var(--pass); stroke-dasharray: 2 3; }
svg .bound.broken { stroke: var(--fail); }
svg .level { stroke: var(--level); }
svg .level-area { fill: var(--level-tint); }
svg .gap { stroke: var(--gap); }
svg .gap-area { fill: var(--gap-tint); }
svg .away { fill: var(--fail); stroke: var(--fail); stroke-width: 2; }
svg .loss { stroke: var(--fail); stroke-width: 2; }
@media (max-width: 40rem) {
  main { padding: 1.25rem 1rem 3rem; }
  h1 { font-size: 1.3rem; }
  .tiles { grid-template-columns: repeat(2, 1fr); }
  .course { --gutter: 2.6rem; }
  .tall .plot { height: 9rem; }
  .overview thead { display: none; }
  .overview tr { display: grid; grid-template-columns: repeat(3, 1fr); gap: .1rem .75rem; padding: .6rem 0;
    border-bottom: 1px solid var(--rule); }
  .overview th, .overview td { border: 0; padding: 0; text-align: left; }
  .overview th { grid-column: 1 / 3; }
  .overview td:nth-child(2) { text-align: right; }
  .overview td[data-title]::before { content: attr(data-title); display: block; font-size: .8rem; color: var(--soft); }
  .events tr { display: block; padding: .4rem 0; border-bottom: 1px solid var(--rule); }
  .events td { display: block; border: 0; padding: 0; }
  .limits thead { display: none; }
  .limits tr { display: grid; grid-template-columns: 4.5rem 1fr auto; padding: .4rem 0;
    border-bottom: 1px solid var(--rule); }
  .limits td { border: 0; padding: 0 .5rem 0 0; }
  .limits td:last-child { grid-column: 2 / 4; width: auto; color: var(--soft); }
  .times span:nth-child(even) { display: none; }
  .facts th { width: 8.5rem; }
  .pair { grid-template-columns: 1fr; }
}
@media print {
  @page { margin: 13mm; }
  html { font-size: 11.5px; }
  body { font-size: 8.8pt; }
  main { max-width: none; padding: 0; }
  section, article { margin-top: 1.75rem; }
  section + article, article + article, article + section { break-before: page; margin-top: 0; border-top: 0; }
  h3 { margin: 1rem 0 .3rem; }
  th, td { padding-top: .14rem; padding-bottom: .14rem; }
  .tiles { grid-template-columns: repeat(6, 1fr); gap: .3rem; }
  .tiles > div { padding: .3rem .55rem; }
  .panel { margin-bottom: .5rem; }
  .plot { height: 3.4rem; }
  .tall .plot { height: 9rem; }
  .course, .tiles > div, tr, .badge, .pair > section { break-inside: avoid; }
  h2, h3, figcaption { break-after: avoid; }
  th { overflow-wrap: normal; }
  .wide { overflow: visible; }
  a { text-decoration: none; }
  * { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
}
)css";

#endif
