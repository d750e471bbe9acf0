#pragma once

// The process-wide objects of the window: made once, found by name from every pane and dialog. All belong to the
// main thread. The main window makes them and takes them away again with itself.

class MyButton;
class QConverterMainWindow;
class QMailSaving;
class QMessageSavingThread;
class QParseDatabase;
class RepairComplete;
class SaveAsWindow;

inline QConverterMainWindow *pConverterWin = nullptr; ///< the main window; writer: main, the selection dialog
inline QConverterMainWindow *pMainWindow = nullptr;   ///< the same; writer: its constructor, first thing

inline QParseDatabase *m_pParseDatabase = nullptr; ///< the selection dialog; a new one for each selection
inline SaveAsWindow *m_pSaveAs = nullptr;          ///< the target dialog of the last save command
inline RepairComplete *m_pRepairComplete = nullptr;

inline QMessageSavingThread *pMessageSavingThread = nullptr; ///< the scan worker, one for the whole run
inline QMailSaving *pMailSaving = nullptr;                   ///< the save worker, likewise

inline MyButton *m_pMyOpenButton = nullptr;
inline MyButton *m_pMySaveButton = nullptr;
inline MyButton *m_pMyHelpButton = nullptr;
