// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;

/// Opens one message box over `parent` that names all malformed contents files of a load, as soon as the
/// event loop runs; it does not block. Nothing happens for an empty list.
void reportMalformedFiles(const QStringList& files, QWidget* parent);
