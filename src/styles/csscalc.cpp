// SPDX-License-Identifier: MIT
#include "styles/csscalc.h"

#include "styles/cssreader.h"
#include "styles/styleproperties.h"

#include <cmath>

namespace {

constexpr std::string_view Opening = "calc(";

/// A number, or a length in both of its units.
struct Quantity {
    double number = 0;
    double pixels = 0;
    double percent = 0;

    [[nodiscard]] bool isNumber() const { return pixels == 0 && percent == 0; }
    void add(const Quantity& other, double sign)
    {
        number += sign * other.number;
        pixels += sign * other.pixels;
        percent += sign * other.percent;
    }
    void scale(double factor)
    {
        number *= factor;
        pixels *= factor;
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
            if (!other) {
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
            if (!other || (sign == '/' && (!other->isNumber() || other->number == 0))) {
                return std::nullopt;
            }
            if (sign == '/') {
                result->scale(1 / other->number);
            } else if (other->isNumber()) {
                result->scale(other->number);
            } else {
                other->scale(result->number);
                result = other;
            }
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
            return Quantity{*number, 0, 0};
        }
        const auto length = readStyleLength(word, m_em);
        return length.unit == StyleLength::Unit::Pixels    ? std::optional(Quantity{0, length.value, 0})
               : length.unit == StyleLength::Unit::Percent ? std::optional(Quantity{0, 0, length.value})
                                                           : std::nullopt;
    }

    std::string_view m_text;
    double m_em;
};

} // namespace

std::optional<StyleLength> readCalculation(std::string_view value, double em)
{
    if (value.substr(0, Opening.size()) != Opening) {
        return std::nullopt;
    }
    constexpr double most = 1'000'000;
    const auto result = Calculation(value, em).read();
    if (!result || !(std::abs(result->percent) <= most) || !(std::abs(result->pixels) <= most)) {
        return std::nullopt;
    }
    return result->percent != 0 ? StyleLength{float(result->percent), StyleLength::Unit::Percent}
                                : StyleLength{float(result->pixels), StyleLength::Unit::Pixels};
}
