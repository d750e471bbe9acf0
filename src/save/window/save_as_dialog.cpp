#include "save/window/save_as_dialog.h"

#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "platform/window/text_fit.h"
#include "scan/store_kinds.h"

SaveAsWindow::SaveAsWindow(QWidget *parent) : QDialog(parent, Qt::Sheet)
{
    setupUi(this);
    fitToText(label_3);
    CloseButton->move(CloseButton->x() - fitToText(Ok_Button), CloseButton->y());
    for (QAbstractButton *button :
         {static_cast<QAbstractButton *>(CloseButton), static_cast<QAbstractButton *>(radioButtonforApple),
          static_cast<QAbstractButton *>(radioButtonforOutlook)})
        fitToText(button);
    connect(CloseButton, &QPushButton::clicked, this, &QDialog::close);
    connect(Ok_Button, &QPushButton::clicked, this, &SaveAsWindow::OnOk);
    radioButton->setFocus();
    radioButton->hide();

    const StoreKind *kind = findStoreKind(pMessageSavingThread->m_mailClientIndex);
    if (!kind || kind->targets == Targets::None)
        return;
    offer(radioButtonforOutlook, kind->targets != Targets::AppleMail, kind->targets != Targets::AppleMail);
    offer(radioButtonforApple, kind->targets != Targets::Outlook, kind->targets == Targets::AppleMail);
}

void SaveAsWindow::offer(QRadioButton *choice, bool offered, bool checked)
{
    choice->setEnabled(offered);
    choice->setChecked(checked);
}

void SaveAsWindow::OnOk()
{
    if (radioButtonforOutlook->isChecked()) {
        hide();
        pConverterWin->OnSavingFilesforOutlook();
    } else if (radioButtonforApple->isChecked()) {
        hide();
        pConverterWin->OnSavingFilesforApple();
    }
}
