#pragma once

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

struct PreviewDialect;

/// One append to the header pane.
struct HeaderLine {
    QString text;
    bool bold = false; ///< the sender
};

/// What the preview shows of one message.
struct PreviewText {
    std::vector<HeaderLine> header; ///< in the order of the appends
    std::optional<QString> html;    ///< text for the web view; nothing: the web view stays closed
};

/// What a preview shows of a message's bytes. Never fails.
PreviewText previewOfBytes(std::string_view bytes, const PreviewDialect &dialect);
/// The message that fills a file (OnWebViewInHTML). A file that can't be opened shows nothing.
PreviewText previewOfFile(const QString &path);
/// A message inside a mailbox file; offset and length in bytes, decimal text (OnWebViewForMboxFileInHTML).
PreviewText previewOfMailboxMessage(const QString &path, const QString &offset, const QString &length);
