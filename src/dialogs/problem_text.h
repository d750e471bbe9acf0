#pragma once

#include <QMessageBox>
#include <QStringList>

constexpr int mostProblems = 5; ///< that a text shows

/// What a run could not read or write, for the user: one sentence a line; of very many the first ones and how many
/// more there are. "" if there is none.
QString problemText(const QStringList &problems);

/// A closing text with the problems as a further paragraph.
QString withProblems(const QString &text, const QStringList &problems);

/// Shows a modal box with an Ok button. The text is never taken as markup: it may hold a path.
/// `more` stands below the text, smaller or plainer as the desktop has it; `details` are shown when they are asked for.
void showBox(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
             const QString &more = {}, const QString &details = {});
