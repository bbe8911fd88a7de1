// SPDX-License-Identifier: MIT
#include "pages/linkcode.h"

QString linkCode(size_t number)
{
    return QStringLiteral("link:") + QString::number(number);
}

bool isHeadingAnchor(const QString& name)
{
    return name.startsWith(QLatin1StringView(HeadingAnchor.data(), qsizetype(HeadingAnchor.size())));
}

int linkNumber(const QString& code)
{
    bool ok = false;
    const int number = code.startsWith(u"link:") ? QStringView(code).sliced(5).toInt(&ok) : -1;
    return ok ? number : -1;
}
