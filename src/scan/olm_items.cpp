#include "scan/olm_items.h"

#include "scan/olm_walk.h"
#include "text/semicolon_list.h"

namespace
{
const QChar separator = QLatin1Char(';');

// Behind an attribute's name stand "=" (part of the name here) and a quote; before the next one a quote and a blank.
constexpr int quote = 1;
constexpr int quoteAndBlank = 2;

const QLatin1String addressAttribute("OPFContactEmailAddressAddress=");
const QLatin1String nameAttribute("OPFContactEmailAddressName=");
const QLatin1String typeAttribute("OPFContactEmailAddressType=");
// What stands around an address without a name, up to the type: 35 units of `<emailAddress xml:space="preserve" `, the
// attribute's name with its quote, a quote and a blank. Whatever else stands before the address is counted with it.
constexpr int namelessLead = 68;

// The value between an attribute at `at` and the next one at `next`. A length below 0 means: up to the end.
QString valueBetween(const QStringRef &item, int at, QLatin1String attribute, int next)
{
    const int start = at + attribute.size() + quote;
    return item.mid(start, next - quoteAndBlank - start).toString();
}

// Calls `use` for each item of an element: what stands before each end tag.
template <typename Use>
void forEachItem(const QString &element, QLatin1String endTag, Use use)
{
    int start = 0;
    for (int end; (end = element.indexOf(endTag, start)) >= 0; start = end + endTag.size())
        use(element.midRef(start, end - start));
}

struct AddressPlaces {
    explicit AddressPlaces(const QStringRef &item)
        : address(item.indexOf(addressAttribute)),
          name(item.indexOf(nameAttribute)),
          type(item.indexOf(typeAttribute))
    {
    }
    bool hasName() const { return name >= 0; }
    bool usable() const
    {
        return address >= 0 && (hasName() ? address < name && name < type : address < type);
    }

    int address;
    int name;
    int type;
};
} // namespace

OlmAddressLists olmRecipients(const QString &element)
{
    OlmAddressLists lists;
    forEachItem(element, QLatin1String("</emailAddress>"), [&](const QStringRef &item) {
        const AddressPlaces at(item);
        if (!at.usable())
            return;
        if (at.hasName()) {
            lists.addresses += valueBetween(item, at.address, addressAttribute, at.name) + separator;
            lists.names += valueBetween(item, at.name, nameAttribute, at.type) + separator;
        } else {
            const int start = at.address + addressAttribute.size() + quote;
            lists.addresses += item.mid(start, at.type - namelessLead) + separator;
            lists.names += QLatin1String("Unknown Name;");
        }
    });
    return lists;
}

OlmAddressLists olmSenders(const QString &element, int longest)
{
    int count = 0;
    QStringRef last;
    forEachItem(element, QLatin1String("</emailAddress>"), [&](const QStringRef &item) {
        last = item;
        ++count;
    });
    const AddressPlaces at(last);
    if (count == 0 || !at.usable())
        return {};
    const auto repeated = [&](const QString &item) {
        return (item + separator).repeated(item.size() > longest ? 1 : qMin(count, longest + 1));
    };
    if (!at.hasName())
        return {repeated(valueBetween(last, at.address, addressAttribute, at.type)), QString()};
    return {repeated(valueBetween(last, at.address, addressAttribute, at.name)),
            repeated(valueBetween(last, at.name, nameAttribute, at.type))};
}

OlmAttachmentLists olmAttachments(const QString &element)
{
    const QLatin1String idAttribute("OPFAttachmentContentID=");
    const QLatin1String contentTypeAttribute("OPFAttachmentContentType=");
    const QLatin1String fileNameAttribute("OPFAttachmentName=");
    const QLatin1String urlAttribute("OPFAttachmentURL=");
    OlmAttachmentLists lists;
    forEachItem(element, QLatin1String("</messageAttachment>"), [&](const QStringRef &item) {
        const int id = item.indexOf(idAttribute);
        const int type = item.indexOf(contentTypeAttribute);
        const int name = item.indexOf(fileNameAttribute);
        const int url = item.indexOf(urlAttribute);
        if (type <= id || name <= type || url <= name)
            return;
        lists.contentIds += id < 0 ? QStringLiteral("no") : valueBetween(item, id, idAttribute, type);
        lists.contentIds += separator;
        lists.contentTypes += valueBetween(item, type, contentTypeAttribute, name) + separator;
        lists.names += entitiesUndone(valueBetween(item, name, fileNameAttribute, url)) + separator;
        QString link = valueBetween(item, url, urlAttribute, item.size());
        link.replace(QLatin1String("&lt;"), QLatin1String("<")).remove(QLatin1Char('"'));
        lists.urls += entitiesUndone(link) + separator;
    });
    return lists;
}

void OlmPendingAttachments::add(const QString &name, qint64 offset, qint64 size)
{
    // No message's list can be as long as this; what comes on top would only fill the memory.
    if (names.size() > largestOlmText)
        return;
    names += name + separator;
    offsets += QString::number(offset) + separator;
    sizes += QString::number(size) + separator;
}

void OlmPendingAttachments::clear()
{
    names.clear();
    offsets.clear();
    sizes.clear();
}

bool OlmPendingAttachments::belongTo(const OlmAttachmentLists &lists) const
{
    if (names.isEmpty() || names != lists.urls)
        return false;
    const int count = names.count(separator);
    for (const QString *list : {&lists.contentIds, &lists.contentTypes, &lists.names,
                                static_cast<const QString *>(&offsets), static_cast<const QString *>(&sizes)})
        if (list->count(separator) != count)
            return false;
    return true;
}
