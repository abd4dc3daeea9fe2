// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the figures of a run for the diagnosis.
#include "Causes.h"

DiagnosisInput diagnosisInput(const MeasuredCamera& camera, const LinkTable& links)
{
    DiagnosisInput input = diagnosisInput(camera.record(), camera.record().runTotals());
    if (const LinkTotals* link = links.find(camera.link()))
        input.link = LinkUse{link->name,
                             link->rate,
                             link->delivered().value_or(0.0),
                             link->cameras,
                             input.run.deliveredThroughput().value_or(0.0),
                             link->busiest};
    return input;
}
