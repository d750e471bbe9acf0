#pragma once

class QUrl;

/// Opens a URL with the program that the user has set for its scheme. An empty URL opens nothing; a failure is
/// passed over.
void openUrl(const QUrl &url);
