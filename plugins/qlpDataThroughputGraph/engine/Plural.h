// SPDX-License-Identifier: GPL-3.0-or-later
// Counts in sentences.
#ifndef KESTROVA_PLURAL_H
#define KESTROVA_PLURAL_H

#include <algorithm>
#include <limits>

/// For tr(). English is spoken without a file of translations, which would know its singular: "one" has its own text.
inline int plural(double count)
{
    return static_cast<int>(std::min(count, double(std::numeric_limits<int>::max())));
}

#endif
