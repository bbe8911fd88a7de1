// SPDX-License-Identifier: MIT
#include "formats/textfile.h"

#include "formats/textdecoding.h"

Result<QString, FileError> readText(const QString& fileName)
{
    const auto bytes = readRegularFile(fileName);
    if (!bytes.ok()) {
        return bytes.error();
    }
    return decodeText(bytes.value());
}
