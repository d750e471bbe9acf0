#include "dialogs/link_label.h"

#include "app/settings_plist.h"
#include "app/shared_state.h"
#include "platform/window/text_fit.h"

#include <QLabel>

void setHelpLink(QLabel *label, const QString &textKey, const QString &pageKey)
{
    const QString text = linkSetting(textKey);
    const QString target = QStringLiteral("file://") + HelpFilePath + linkSetting(pageKey);
    label->setText(QStringLiteral("<a href=\"%1\">%2</a>").arg(target, text));
    label->setOpenExternalLinks(true);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    label->setFont(lucidaFont(12));
    label->setHidden(text.isEmpty());
    fitToText(label);
}
