// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <stop_token>
#include <vector>

/// The positions of the texts in the order of their UTF-16 code units; equal texts keep their order. Once a
/// stop has been asked for, the order is arbitrary.
[[nodiscard]] std::vector<quint32> orderOf(const std::vector<QStringView>& texts,
                                           const std::stop_token& stop);
