#pragma once

// The process-wide state of a run. A scan fills it, browsing and saving read it. Grouped by who owns what; each line tells
// meaning, writer, reader and reset point. It has no lock: the scan thread writes the maps and records while it runs (the
// folder records are made of its signals), everybody else only reads them after it has ended. Flags that one thread sets
// and another polls are atomic.

#include "app/path_list.h"
#include "app/records.h"
#include "platform/byte_source.h"

#include <QHash>
#include <QMap>
#include <QMultiMap>
#include <QPair>
#include <QString>
#include <QStringList>

#include <atomic>

// ---- Folder ids and folder maps (writer: the tree builders of the scan; cleared by each new scan) ----

inline qint64 llRootId = 501;        ///< id of the root "Main Identity"; never changes
inline qint64 PID = 501;             ///< last folder id given; never reset, ids rise across scans
inline qint64 llParentIdRunning = 0; ///< folder found or made last; the parent of the records that follow

inline QMultiMap<QString, qint64> objMapName_FID; ///< folder name -> ids of all folders of that name
inline QMap<qint64, qint64> objMapFID_PID;        ///< folder id -> parent id; rising id is the tree's order
inline QMap<qint64, QString> objMapFID_Name;      ///< folder id -> raw name, extensions included
inline QMap<qint64, QString> MapLeftTreePath;     ///< folder id -> path in the file system, "" where missing
inline QHash<QPair<qint64, QString>, qint64>
    folderByPlace; ///< parent id and name -> id: an index of the maps

// ---- Selection (writer: selection dialog; reader: all readers and writers) ----

inline QString m_selectedFile;           ///< chosen store: a folder or an .olm file
inline int globalVarForCurrentIndex = 0; ///< client index when a location was last filled in or browsed

// ---- Flow flags ----

inline std::atomic<bool> bParseDatabase{false};      ///< the selection dialog is the current step
inline std::atomic<bool> bParseDatabaseClose{false}; ///< dialog closed without a scan, or nothing was found
inline std::atomic<bool> bStopFlag{false};           ///< the running worker is asked to stop; workers poll it
inline std::atomic<bool> bProcessRunning{false};     ///< a scan is running; closing is refused
inline std::atomic<bool> bCheckFucntion{false};  ///< the walk found its folder; working flag of tree creators
inline std::atomic<bool> bForAppleMail{false};   ///< the save target is the Apple Mail bundle
inline std::atomic<bool> bForOutlookMail{false}; ///< the save target is the Outlook bundle
inline std::atomic<bool> bExactCopies{false};    ///< a save keeps every byte of every message
inline std::atomic<bool> IsPreview{false};       ///< a save has started and not ended
inline std::atomic<bool> FileSavingIdentification{false}; ///< something was written in this save
inline int closeevent = 0;                                ///< confirmed closes of the main window

// ---- Store kind flags: exactly one is set by a scan (writer: QMessageSavingThread::run) ----

inline std::atomic<bool> bMboxFileFound{false};       ///< clients 1, 3, 4, 6, 7
inline std::atomic<bool> bEmlxFileFound{false};       ///< client 2
inline std::atomic<bool> bOlmFileFound{false};        ///< client 5
inline std::atomic<bool> bEmlFileFound{false};        ///< client 8
inline std::atomic<bool> bemlandfemlfileFound{false}; ///< client 9
inline std::atomic<bool> bMbsFileFound{false};        ///< client 10

// ---- Path lists of the readers ----

inline QStringList AllFilePathInStrList;    ///< entries of the selected folder, depth first; cleared by run
inline QString GetAllFilePathInStrList;     ///< the entry now being read; never cleared
inline int nextItr = 0;                     ///< index of that entry (scan), mailboxes done (save)
inline PathList listOfPathOfOnlyForTree;    ///< mail files taken into the tree; cleared by a new selection
inline QStringList listOfPath1;             ///< fixed name, nothing reads it; cleared by run
inline QStringList strListSplitPath;        ///< fixed name, nothing reads it
inline QStringList listOfPathOfOnlyEmlx;    ///< found .emlx files; cleared by run
inline QStringList listOfPathOfEmlxPart;    ///< fixed name, nothing reads it; cleared by run
inline QStringList listOfPathOfPartialEmlx; ///< fixed name, nothing reads it; cleared by run
inline QStringList listOfPathOfOnlyEml;     ///< found .eml files; cleared by run
inline QStringList listOfPathOfOnlyMbs;     ///< found .mbs files; cleared by their readers
inline QStringList AllFilePathInStrListForTree; ///< files of the folder now listed; cleared on a folder click

// ---- Save state ----

inline QString saveDir;                              ///< folder chosen for the bundle, no trailing "/"
inline QString FileSavingPath;                       ///< full path of the bundle, for the closing texts
inline std::atomic<quint64> ulCount{0};              ///< files (OLM: messages) to convert in this save
inline std::atomic<quint64> noOfConvertedMessage{0}; ///< messages done
inline quint32 fileNameCounter = 0; ///< saves of message files so far; fixed name, nothing reads it
inline QString sSelectedItemList =
    QStringLiteral("Mail"); ///< fixed name, nothing reads it: folder shown in the status bar

// ---- OLM reader ----

inline int fileDescriptor = -1;     ///< the open archive
inline qint64 lSize = 0;            ///< its size in bytes
inline FileStamp scannedArchive;    ///< which file that was; a save of another one is refused
inline qint64 dwOffset = 0;         ///< the walk's position in bytes
inline char *pBuff = nullptr;       ///< XML handed to the record parser, zero-terminated; null between uses
inline QString tmpstrOrigPath;      ///< pending attachments: entry names, each followed by ";"
inline QString tmpdoffset_NoteText; ///< pending attachments: offsets in bytes, decimal, likewise
inline QString tmpdsizeofattch;     ///< pending attachments: sizes in bytes, decimal, likewise
inline quint32 MailItemCount = 0;   ///< records of the OLM chain

// ---- Application paths (writer: main) ----

inline QString strPlistPathLink; ///< the application's Resources folder, no trailing "/"
inline QString HelpFilePath;     ///< the same
inline QString strPlistPath;     ///< MailConverterLink.plist in that folder

/// Clears the six store kind flags and sets the one given; null sets none.
void setStoreKind(std::atomic<bool> *kind);
/// Frees the mailbox message records and empties the four folder maps: the start of each scan.
void CleanLinkedList();
/// Frees the folder and file records and forgets the files taken into the tree: a new selection.
void discardScanResult();
