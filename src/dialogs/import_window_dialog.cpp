#include "dialogs/import_window_dialog.h"

#include "dialogs/link_label.h"
#include "platform/window/text_fit.h"

namespace
{
constexpr int messageHeight = 62; ///< pixels, as the form has it
}

QImportWindow::QImportWindow(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    connect(OKButton, &QPushButton::clicked, this, &QImportWindow::HideDlg);
    HTImport();
    HTImport1();
    fitToText(label_3);
    setModal(true);
    setFixedSize(size());
}

void QImportWindow::HTImport()
{
    setHelpLink(ImportLabel, QStringLiteral("Apple Mail"), QStringLiteral("HowToImportLink"));
}

void QImportWindow::HTImport1()
{
    setHelpLink(ImportLabel_2, QStringLiteral("Outlook 2011"), QStringLiteral("HowToImportLink1"));
}

void QImportWindow::showMessage(const QString &text)
{
    setMessage(text);
    show();
    OKButton->setFocus();
}

void QImportWindow::setMessage(const QString &text)
{
    InfoLabels->setText(text);
    const int more =
        qMax(messageHeight, InfoLabels->neededHeight(InfoLabels->width())) - InfoLabels->height();
    InfoLabels->resize(InfoLabels->width(), InfoLabels->height() + more);
    for (QWidget *below : {static_cast<QWidget *>(label_3), static_cast<QWidget *>(ImportLabel),
                           static_cast<QWidget *>(ImportLabel_2), static_cast<QWidget *>(OKButton)})
        below->move(below->x(), below->y() + more);
    setFixedSize(width(), height() + more);
}

void QImportWindow::HideDlg()
{
    hide();
}
