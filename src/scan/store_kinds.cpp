#include "scan/store_kinds.h"

#include <iterator>
#include <string_view>

namespace
{
constexpr int clients = static_cast<int>(std::size(storeKinds));
constexpr const StoreScan *stores[] = {&mboxStore,      &emlxStore,  &mailMateStore,
                                       &outspringStore, &operaStore, &olmStore};

constexpr bool clientsAscend()
{
    for (int i = 0; i < clients; ++i)
        if (storeKinds[i].client != i)
            return false;
    return true;
}
static_assert(clientsAscend(), "looked up by client");

constexpr bool clientsDiffer()
{
    for (int i = 0; i < clients; ++i)
        for (int j = 0; j < i; ++j)
            if (std::string_view(storeKinds[i].cliName) == storeKinds[j].cliName ||
                std::string_view(storeKinds[i].label) == storeKinds[j].label)
                return false;
    return true;
}
static_assert(clientsDiffer(), "a name picks one client");

constexpr bool storesDiffer()
{
    for (const StoreScan *one : stores)
        for (const StoreScan *other : stores)
            if (one != other &&
                (one->kindFlag == other->kindFlag || one->reader == other->reader ||
                 (one->listFile && other->listFile && std::string_view(one->listFile) == other->listFile)))
                return false;
    return true;
}
static_assert(storesDiffer(), "a flag, a reader and a list of found files belong to one kind of store");

constexpr bool isListed(const StoreScan *wanted)
{
    for (const StoreScan *store : stores)
        if (store == wanted)
            return true;
    return wanted == nullptr;
}

constexpr bool storesAreListed()
{
    for (const StoreKind &kind : storeKinds)
        if (!isListed(kind.store))
            return false;
    return true;
}
static_assert(storesAreListed(), "what is held true of stores is held true of each client's");

constexpr bool storesAreWhole()
{
    for (const StoreKind &kind : storeKinds)
        if ((kind.store == nullptr) != (kind.client == 0) ||
            (kind.store == nullptr) != (kind.targets == Targets::None))
            return false;
    for (const StoreScan *store : stores)
        if ((store->pattern == nullptr) != (store->listFile == nullptr) ||
            (store->pattern == nullptr) != (store->found == nullptr))
            return false;
    return true;
}
static_assert(storesAreWhole(), "each client has a store and targets; what is searched for has a list");
} // namespace

const StoreKind *findStoreKind(int client)
{
    return client >= 0 && client < clients ? &storeKinds[client] : nullptr;
}

const StoreKind *findStoreKind(const QString &nameOrIndex)
{
    for (const StoreKind &row : storeKinds)
        if (row.client > 0 &&
            (nameOrIndex == QLatin1String(row.cliName) || nameOrIndex == QString::number(row.client)))
            return &row;
    return nullptr;
}
