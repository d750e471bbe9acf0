#pragma once

#include <QString>

/// Semicolon lists made of an element's address items.
struct OlmAddressLists {
    QString addresses;
    QString names;
};

/// The items of a To, Cc or Bcc element; one without a name gets "Unknown Name". An item whose attributes are
/// missing or stand in another order than address, name, type is passed over.
OlmAddressLists olmRecipients(const QString &element);
/// The items of a From element: the last one, once for each item there is. One without a name adds none. Neither
/// list is carried on much beyond `longest` UTF-16 units.
OlmAddressLists olmSenders(const QString &element, int longest);

/// Semicolon lists made of an element's attachment items.
struct OlmAttachmentLists {
    QString contentIds; ///< "no" for an item without one
    QString contentTypes;
    QString names;
    QString urls;
};

/// The items of an attachment list; one whose attributes are missing or stand in another order than content id
/// (which may be missing), type, name, URL is passed over.
OlmAttachmentLists olmAttachments(const QString &element);

/// Attachments that the walk has met and no message has claimed: the fields are semicolon lists that grow in step.
struct OlmPendingAttachments {
    QString &names;   ///< of their entries
    QString &offsets; ///< bytes, decimal
    QString &sizes;   ///< bytes, decimal

    /// Tells of an attachment that was come to: its entry, offset and size in bytes.
    void add(const QString &name, qint64 offset, qint64 size);
    /// Forgets all of them.
    void clear();
    /// True if these are just the attachments of the lists: same URLs, and as many items in every list.
    bool belongTo(const OlmAttachmentLists &lists) const;
};
