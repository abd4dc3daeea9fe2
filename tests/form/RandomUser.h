// SPDX-License-Identifier: GPL-3.0-or-later
// Somebody who cannot leave the form alone: works it by a seeded generator.
#ifndef KESTROVA_TESTS_RANDOMUSER_H
#define KESTROVA_TESTS_RANDOMUSER_H

#include <random>

class QWidget;

/// The same seed does the same to the same form.
class RandomUser
{
public:
    explicit RandomUser(unsigned seed) : random(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    /// Zooms, drags or works any button, box or editor, whether or not a person could reach it now.
    void act(const QWidget& form);

private:
    void actOn(QWidget* plot);

    std::mt19937 random;
};

#endif
