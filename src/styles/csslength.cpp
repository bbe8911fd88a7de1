// SPDX-License-Identifier: MIT
#include "styles/csslength.h"

#include "styles/cssreader.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace {

constexpr std::string_view Opening = "calc(";

/// A length that is written down; "auto" when it is none.
StyleLength writtenLength(std::string_view value, double em)
{
    static const std::unordered_map<std::string_view, double> units{
        {"px", 1}, {"pt", 4.0 / 3}, {"pc", 16}, {"in", 96}, {"cm", 37.8}, {"mm", 3.78}, {"rem", FontSize}};
    std::string_view unit;
    const auto number = readCssNumber(value, unit);
    if (!number) {
        return {};
    }
    if (unit == "%" || unit == "fr") {
        return {float(*number), unit == "%" ? StyleLength::Unit::Percent : StyleLength::Unit::Share};
    }
    if (unit == "em" || unit == "ex" || unit == "ch") {
        return {float(*number * em * (unit == "em" ? 1 : 0.5)), StyleLength::Unit::Pixels};
    }
    const auto found = units.find(unit);
    const bool isZero = *number == 0 && unit.empty();
    return found != units.end() ? StyleLength{float(*number * found->second), StyleLength::Unit::Pixels}
           : isZero             ? StyleLength{0, StyleLength::Unit::Pixels}
                                : StyleLength();
}

/// A number, or a length in both of its units.
struct Quantity {
    double value = 0; ///< in pixels, when it is a length
    double percent = 0;
    bool isLength = false;

    void add(const Quantity& other, double sign)
    {
        value += sign * other.value;
        percent += sign * other.percent;
    }
    void scale(double factor)
    {
        value *= factor;
        percent *= factor;
    }
};

/// Reads sums of products, in the words of CSS: signs of sums have blanks around them.
class Calculation {
public:
    Calculation(std::string_view text, double em) : m_text(text), m_em(em) {}

    std::optional<Quantity> read()
    {
        const auto result = sum(0);
        return trimmedCss(m_text).empty() ? result : std::nullopt;
    }

private:
    static constexpr int Deepest = 8;

    [[nodiscard]] char next()
    {
        m_text = trimmedCss(m_text);
        return m_text.empty() ? '\0' : m_text.front();
    }

    std::optional<Quantity> sum(int depth)
    {
        auto result = product(depth);
        for (char sign = next(); result && (sign == '+' || sign == '-'); sign = next()) {
            m_text.remove_prefix(1);
            const auto other = product(depth);
            if (!other || other->isLength != result->isLength) {
                return std::nullopt;
            }
            result->add(*other, sign == '+' ? 1 : -1);
        }
        return result;
    }

    std::optional<Quantity> product(int depth)
    {
        auto result = value(depth);
        for (char sign = next(); result && (sign == '*' || sign == '/'); sign = next()) {
            m_text.remove_prefix(1);
            auto other = value(depth);
            if (!other || (other->isLength && (sign == '/' || result->isLength)) ||
                (sign == '/' && other->value == 0)) {
                return std::nullopt;
            }
            if (other->isLength) {
                std::swap(*result, *other);
            }
            result->scale(sign == '/' ? 1 / other->value : other->value);
        }
        return result;
    }

    std::optional<Quantity> value(int depth)
    {
        const bool isNested = next() == '(' || m_text.substr(0, Opening.size()) == Opening;
        return isNested ? group(depth) : measure();
    }

    std::optional<Quantity> group(int depth)
    {
        m_text.remove_prefix(m_text.find('(') + 1);
        const auto result = depth < Deepest ? sum(depth + 1) : std::nullopt;
        if (next() != ')') {
            return std::nullopt;
        }
        m_text.remove_prefix(1);
        return result;
    }

    std::optional<Quantity> measure()
    {
        const auto word = m_text.substr(0, m_text.find_first_of(" \t\n*/()"));
        m_text.remove_prefix(word.size());
        std::string_view unit;
        if (const auto number = readCssNumber(word, unit); number && unit.empty()) {
            return Quantity{*number, 0, false};
        }
        const auto length = writtenLength(word, m_em);
        return length.unit == StyleLength::Unit::Pixels    ? std::optional(Quantity{length.value, 0, true})
               : length.unit == StyleLength::Unit::Percent ? std::optional(Quantity{0, length.value, true})
                                                           : std::nullopt;
    }

    std::string_view m_text;
    double m_em;
};

StyleLength calculatedLength(std::string_view value, double em)
{
    constexpr double most = 1'000'000;
    const auto result = Calculation(value, em).read();
    if (!result || !result->isLength || !(std::abs(result->percent) <= most) ||
        !(std::abs(result->value) <= most)) {
        return {};
    }
    return result->percent != 0 ? StyleLength{float(result->percent), StyleLength::Unit::Percent}
                                : StyleLength{float(result->value), StyleLength::Unit::Pixels};
}

} // namespace

StyleLength readStyleLength(std::string_view value, double em)
{
    return value.substr(0, Opening.size()) == Opening ? calculatedLength(value, em)
                                                      : writtenLength(value, em);
}

std::optional<double> readLength(std::string_view value, double em)
{
    const auto length = readStyleLength(value, em);
    return length.unit == StyleLength::Unit::Pixels ? std::optional(double(length.value)) : std::nullopt;
}

std::optional<float> readPixels(std::string_view value, double em, double width)
{
    constexpr double most = 100'000; // pixels
    constexpr double percent = 0.01;
    const auto length = readStyleLength(value, em);
    if (length.unit == StyleLength::Unit::Auto || length.unit == StyleLength::Unit::Share) {
        return std::nullopt;
    }
    const double pixels =
        length.unit == StyleLength::Unit::Percent ? length.value * percent * width : double(length.value);
    return float(std::clamp(pixels, -most, most));
}
