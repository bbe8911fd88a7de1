// SPDX-License-Identifier: MIT
#include "app/options.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Quenda"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvanel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUENDA_VERSION));
    return serveCommandLine(argc, argv);
}
