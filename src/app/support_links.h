#pragma once

#include <QUrl>

// Where the entries of the Help menu lead. The addresses are read from the settings property list on each call;
// one that is missing or empty gives an empty URL.

/// The help page in the application's resources.
QUrl helpPage();
/// "mailto:" and the support's address.
QUrl GetEmailSupport();
/// The support's pages.
QUrl GetViewSupport();
/// The form for an enquiry.
QUrl GetGenerateTicket();
/// The knowledge base.
QUrl GetKnowledgebase();
