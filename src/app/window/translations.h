#pragma once

class QApplication;

/// Shows the program's texts, and the toolkit's own, in the system's language where there is a translation. To
/// be called before the first window is made; the translations belong to the application.
void installTranslations(QApplication *application);
