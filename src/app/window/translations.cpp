#include "app/window/translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace
{
/// Texts that reach the window from tables and files, named so that they stand among those to be translated.
[[maybe_unused]] constexpr const char *textsFromElsewhere[] = {
    QT_TRANSLATE_NOOP("AboutDlg", "Contact support"),
    QT_TRANSLATE_NOOP("BrowseWindow", "Select Mail Client"),
};
} // namespace

void installTranslations(QApplication *application)
{
    const auto install = [application](const QLocale &locale, const QString &name, const QString &folder) {
        auto *translator = new QTranslator(application);
        if (translator->load(locale, name, QStringLiteral("_"), folder))
            application->installTranslator(translator);
        else
            delete translator;
    };
    const QString own = QStringLiteral("velmora");
    install(QLocale(QLocale::English), own, QStringLiteral(":/i18n")); // "1 mailbox", "2 mailboxes"
    install(QLocale(), QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QLocale(), own, QStringLiteral(":/i18n"));
}
