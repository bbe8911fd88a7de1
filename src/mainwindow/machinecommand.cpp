// SPDX-License-Identifier: MIT
#include "mainwindow/machinecommand.h"

#include "library/helplibrary.h"
#include "machine/machinedialog.h"

#include <algorithm>

void openMachineDialog(const HelpLibrary& library, QWidget* window,
                       const std::function<void(const QString& name)>& open)
{
    QStringList names;
    for (const auto* root : library.roots()) {
        names.append(root->fileName);
    }
    auto* dialog = new MachineDialog(names, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &MachineDialog::openRequested, window, [open](const QStringList& chosen) {
        std::for_each(chosen.begin(), chosen.end(), open);
    });
    dialog->open();
}
