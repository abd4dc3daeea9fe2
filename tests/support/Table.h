// SPDX-License-Identifier: GPL-3.0-or-later
// The table of a data-driven test: named columns, then a call for each row. Cells have the types of their columns: what
// does not convert to them does not compile.
#ifndef KESTROVA_TABLE_H
#define KESTROVA_TABLE_H

#include <tuple>
#include <vector>

#include <QtTest/QTest>

/// For one _data() function, on its stack.
template<typename... Cells>
class Table
{
public:
    template<typename... Names>
    explicit Table(Names... names)
    {
        (QTest::addColumn<Cells>(names), ...);
    }
    void operator()(const char* name, const Cells&... cells) const { (QTest::newRow(name) << ... << cells); }
};

/// Rows that need no names: a loop runs over them, and what a row expects tells which one has failed.
template<typename... Cells>
using Rows = std::vector<std::tuple<Cells...>>;

#endif
