// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <vector>

class QWidget;
struct Problem;

/// Opens one message box over `parent` that names all malformed contents files of a load, with what the
/// problems say of them below, as soon as the event loop runs; it does not block. Nothing happens for an
/// empty list.
void reportMalformedFiles(const QStringList& files, const std::vector<Problem>& problems, QWidget* parent);
