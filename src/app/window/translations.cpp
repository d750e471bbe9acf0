#include "app/window/translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

void installTranslations(QApplication *application)
{
    const auto install = [application](const QString &name, const QString &folder) {
        auto *translator = new QTranslator(application);
        if (translator->load(QLocale(), name, QStringLiteral("_"), folder))
            application->installTranslator(translator);
        else
            delete translator;
    };
    install(QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("velmora"), QStringLiteral(":/i18n"));
}
