#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/// The account key of a message file of an Opera Mail store: the second "/"-separated piece of what stands behind
/// the last "/store" of the path, trimmed; of the whole path where there is no "/store". "" if there is none.
QString operaAccountOf(const QString &path);

struct OperaAccountRule;

extern const OperaAccountRule scanAccounts; ///< names of the folders that a scan makes
extern const OperaAccountRule saveAccounts; ///< names of the folders that a save writes to

/// The names that accounts.ini gives the accounts of a store: a section "[key]" whose first 101 lines hold
/// "Account Name=NAME". The end of a section is not looked at. What differs between a scan and a save stands in
/// the rules (in the source).
class OperaAccounts
{
public:
    /// Reads the file, as UTF-8 (UTF-16 with a byte order mark), at most 1 MiB. One that can't be read gives no names,
    /// and errorString() tells why; an empty path does not count as one.
    OperaAccounts(const QString &iniPath, const OperaAccountRule &rule);

    /// The account name for the next file, by its account key. Ask for one file after the other: a name may be
    /// carried over from the file before. A key without a name is its own name. Empty before the first key that
    /// is not empty.
    QString nameOf(const QString &key);
    /// Why the file could not be read, "" where nothing went wrong.
    const QString &errorString() const { return m_error; }

private:
    std::optional<QString> sectionName(const QString &key) const;

    const OperaAccountRule &m_rule;
    bool m_readable = false;
    QString m_error;
    QStringList m_lines;                                   ///< trimmed
    QHash<QString, std::optional<QString>> m_sectionNames; ///< key -> what the file says
    QString m_key;                                         ///< of the last file
    QString m_name;                                        ///< likewise
};
