// Hostile bytes as a message file of Opera Mail and as its accounts.ini: fields keep to their limits, the two ways to
// read a message agree, and the mailbox that a message names lies in the bundle.

#include "app/problem_log.h"
#include "app/records.h"
#include "save/mailbox_target.h"
#include "scan/opera_message.h"
#include "scratch_folder.h"
#include "text/opera_accounts.h"
#include "text/opera_location.h"

#include <cstdint>

namespace
{
void check(bool holds)
{
    if (!holds)
        std::abort();
}

void checkTarget(const QString &account, const QString &location)
{
    const QString file =
        operaToOutlook(QStringLiteral("/%1/%2").arg(account, location), {}, QStringLiteral("/bundle")).file;
    check(file.startsWith(QStringLiteral("/bundle/")) && !file.contains(QStringLiteral("/../")));
}

// What accounts.ini calls the accounts that it names, and one that it doesn't.
QStringList namesIn(const QString &path, std::string_view bytes)
{
    QStringList names;
    const QString text = QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    QStringList keys = text.split(QLatin1Char('[')).mid(0, 8);
    for (QString &key : keys)
        key = key.section(QLatin1Char(']'), 0, 0);
    keys.append(QStringLiteral("account1"));
    for (const OperaAccountRule *rule : {&scanAccounts, &saveAccounts}) {
        OperaAccounts accounts(path, *rule);
        check(accounts.errorString().isEmpty());
        for (const QString &key : qAsConst(keys)) {
            names.append(accounts.nameOf(key));
            check(key.isEmpty() || !names.last().isEmpty());
        }
    }
    return names;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ScratchFolder folder;
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const QString path = folder.write(QStringLiteral("1.mbs"), bytes);
    const OperaMessage message = readOperaMessage(path, OperaFields::All);
    check(message.error.isEmpty() && message.label.size() <= operaFieldLimit);
    check(!message.label.isEmpty() ||
          bytes.find('\0') != std::string_view::npos); // a field ends at a zero character
    check(message.sender.size() <= headerFieldLimit && message.subject.size() <= headerFieldLimit);
    check(message.folder == readOperaMessage(path, OperaFields::Folder).folder);
    QString location;
    takeOperaFolderBehind(bytes, &location);
    for (const QString &name : namesIn(path, bytes))
        checkTarget(name, location);
    check(takeProblems().isEmpty());
    return 0;
}
