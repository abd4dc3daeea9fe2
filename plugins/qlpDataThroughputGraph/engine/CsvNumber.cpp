// SPDX-License-Identifier: GPL-3.0-or-later
// Six significant digits of a double with one multiplication or division by an exact power of ten. That result is
// rounded itself, but only to half a unit in its last place, which is too little to move it across a half that it
// does not hit; where it hits one, the remainder of the operation, which is exact, decides.
#include "CsvNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace {

constexpr int significantDigits = 6;
constexpr double smallestMantissa = 1e5; ///< of six digits
constexpr double mantissaEnd = 1e6;

/// The powers of ten that a double holds exactly.
constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largestPower = 22;

/// Of a normal number, rounded down.
int binaryExponent(double size)
{
    quint64 bits = 0;
    std::memcpy(&bits, &size, sizeof bits);
    return static_cast<int>(bits >> 52) - 1023;
}

/// value x 10^power, and on demand the part that rounding took from it (its sign is exact).
struct Scaled
{
    Scaled(double v, int p) : value(v), power(p)
    {
        result = power >= 0 ? value * powersOfTen[power] : value / powersOfTen[-power];
    }

    /// Below, at or above zero as the true product is below, at or above `result`.
    double remainder() const
    {
        return power >= 0 ? std::fma(value, powersOfTen[power], -result)
                          : std::fma(-result, powersOfTen[-power], value);
    }

    double value;
    int power;
    double result;
};

char* writeSlowly(char* out, double value)
{
    const QByteArray text = QString::number(value, 'g', significantDigits).toLatin1();
    return std::copy(text.begin(), text.end(), out);
}

/// Six digits, and room behind them for append().
struct Digits
{
    explicit Digits(quint32 mantissa)
    {
        for (int i = significantDigits - 1; i >= 0; --i, mantissa /= 10)
            text[i] = static_cast<char>('0' + mantissa % 10);
        while (text[count - 1] == '0')
            --count;
    }
    /// Copies more than it appends: a copy of fixed size needs no loop.
    char* append(char* out, int from, int to) const
    {
        std::memcpy(out, text + from, significantDigits);
        return out + (to - from);
    }

    char text[2 * significantDigits] = {};
    int count = significantDigits; ///< without the zeros at the end
};

/// With the point after `pointAfter` digits; without digits behind it there is no point.
char* writeFixed(char* out, const Digits& digits, int pointAfter)
{
    if (pointAfter <= 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -pointAfter, '0');
        return digits.append(out, 0, digits.count);
    }
    out = digits.append(out, 0, pointAfter);
    if (digits.count <= pointAfter)
        return out;
    *out++ = '.';
    return digits.append(out, pointAfter, digits.count);
}

char* writeExponential(char* out, const Digits& digits, int exponent)
{
    out = writeFixed(out, digits, 1);
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent); // the fast path's range has two digits at most
    *out++ = static_cast<char>('0' + size / 10);
    *out++ = static_cast<char>('0' + size % 10);
    return out;
}

} // namespace

char* writeCsvNumber(char* out, quint64 value)
{
    return std::to_chars(out, out + csvNumberRoom, value).ptr;
}

char* writeCsvNumber(char* out, qint32 value)
{
    return std::to_chars(out, out + csvNumberRoom, value).ptr;
}

char* writeCsvNumber(char* out, double value)
{
    if (value == 0.0) {
        *out++ = '0';
        return out;
    }
    const double size = std::fabs(value);
    if (!(size >= 1e-16 && size < 1e27)) // outside, the power of ten would not be exact; also what is no number
        return writeSlowly(out, value);

    // The decimal exponent, at most one too small: log10(2) is a little more than 315652 / 2^20.
    int exponent = binaryExponent(size) * 315652 >> 20;
    Scaled scaled(size, significantDigits - 1 - exponent);
    if (scaled.result >= mantissaEnd)
        scaled = Scaled(size, significantDigits - 1 - ++exponent);
    else if (scaled.result < smallestMantissa)
        scaled = Scaled(size, significantDigits - 1 - --exponent);

    auto mantissa = static_cast<quint32>(scaled.result);
    const double fraction = scaled.result - mantissa;
    if (fraction > 0.5 || (fraction == 0.5 && scaled.remainder() >= 0.0))
        ++mantissa;
    if (mantissa >= static_cast<quint32>(mantissaEnd)) {
        mantissa /= 10;
        ++exponent;
    }

    if (value < 0)
        *out++ = '-';
    const Digits digits(mantissa);
    return exponent < -4 || exponent >= significantDigits ? writeExponential(out, digits, exponent)
                                                          : writeFixed(out, digits, exponent + 1);
}
