#include "dialogs/repair_complete_dialog.h"

#include "dialogs/link_label.h"

RepairComplete::RepairComplete(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    connect(OkButton, &QPushButton::clicked, this, &QDialog::hide);
    HTImport();
}

void RepairComplete::HTImport()
{
    setHelpLink(ImportLabel, QStringLiteral("HowToImport"), QStringLiteral("HowToImportLink"));
}
