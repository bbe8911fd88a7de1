// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <variant>

/// A value, or the reason why there is none.
template <typename Value, typename Error>
class Result {
public:
    Result(Value value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool ok() const { return m_state.index() == 0; }
    /// Only when ok().
    [[nodiscard]] const Value& value() const { return *std::get_if<0>(&m_state); }
    /// The value, which is gone then; only when ok().
    [[nodiscard]] Value take() { return std::move(*std::get_if<0>(&m_state)); }
    /// Only when not ok().
    [[nodiscard]] const Error& error() const { return *std::get_if<1>(&m_state); }

private:
    std::variant<Value, Error> m_state;
};
