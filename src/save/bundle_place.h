#pragma once

#include "platform/file_handle.h"

#include <QCoreApplication>
#include <QString>

#include <functional>

/// Where a bundle is written, from before its first byte to the end of the save. An old bundle is moved aside to
/// NAME.old ("Main Identity.rge.old") and goes when the new one is whole. A lock file in the chosen folder keeps other
/// saves out. The new bundle's folder is made when the first thing goes into it, by nobody else, and held open, so
/// that a folder that is taken away is noticed. What goes wrong is told to the problem log.
class BundlePlace
{
    Q_DECLARE_TR_FUNCTIONS(BundlePlace)

public:
    /// What to do with a bundle that stands there.
    enum class Old { Refuse, Replace };

    BundlePlace() = default;
    ~BundlePlace() { leave(); }
    BundlePlace(const BundlePlace &) = delete;
    BundlePlace &operator=(const BundlePlace &) = delete;

    /// Why a bundle can't be replaced while `store` is read: what would go is the store, lies in it or holds it, links
    /// resolved. "" if they are apart, or nothing stands there.
    static QString conflict(const QString &store, const QString &bundle);
    /// True if anything stands at a path, be it a broken link.
    static bool isThere(const QString &path);
    /// Where an old bundle lies until the new one is whole.
    static QString oldPath(const QString &bundle);

    /// Takes the place of a bundle (absolute path, its folder exists); what was taken before is left. Gives why that is
    /// not possible, then nothing has been changed but for what was already removed; "" if the save may begin.
    QString open(const QString &bundle, Old old);
    /// Makes a folder of the bundle with those above it. Gives 0 or the system's error. Folders that don't belong to
    /// the place, or without one, are just made.
    int makeFolder(const QString &path);
    /// Brings all files and folders of the bundle to the disk, as long as `goOn` says so.
    void sync(const std::function<bool()> &goOn);
    /// Ends the save; `whole`: all was written. True if a whole bundle stands there; the old one has gone then. Else it
    /// stays and that is told. May be called again, and without a place.
    bool finish(bool whole);
    /// True from open to finish.
    bool isOpen() const { return m_folder.isOpen(); }

private:
    QString lock();
    QString moveOldAside(Old old);
    int makeBundle();
    bool isLost();
    void removeOld();
    void leave();

    QString m_bundle;    ///< absolute
    FileHandle m_folder; ///< the chosen folder
    FileHandle m_lock;   ///< not open where the folder can't be written
    FileHandle m_root;   ///< the bundle's folder, once it is made
    bool m_replaces = false;
};

/// The place of the save that runs, like saveLedger its account.
inline BundlePlace bundlePlace;
