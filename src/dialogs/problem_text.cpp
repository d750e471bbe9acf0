#include "dialogs/problem_text.h"

#include <QCoreApplication>

QString problemText(const QStringList &problems)
{
    QStringList lines = problems.mid(0, mostProblems);
    const int more = problems.size() - lines.size();
    if (more > 0)
        lines.append(QCoreApplication::translate("Problems", "... and %n more", nullptr, more));
    return lines.join(QLatin1Char('\n'));
}

QString withProblems(const QString &text, const QStringList &problems)
{
    return problems.isEmpty() ? text : text + QStringLiteral("\n\n") + problemText(problems);
}

void showBox(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
             const QString &more, const QString &details)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(more);
    box.setDetailedText(details);
    box.setDefaultButton(QMessageBox::Ok); // not the details
    box.exec();
}
