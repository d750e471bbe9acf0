#pragma once

class QLabel;
class QString;

/// Makes a label a link to a help page. The settings property list has the link's text under `textKey` and the
/// page's name, which is appended to HelpFilePath, under `pageKey`. Without a text the label is hidden.
void setHelpLink(QLabel *label, const QString &textKey, const QString &pageKey);
