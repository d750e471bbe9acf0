#include "app/shared_state.h"

void setStoreKind(std::atomic<bool> *kind)
{
    for (std::atomic<bool> *flag : {&bMboxFileFound, &bEmlxFileFound, &bOlmFileFound, &bEmlFileFound,
                                    &bemlandfemlfileFound, &bMbsFileFound})
        *flag = flag == kind;
}

void CleanLinkedList()
{
    freeMessages();
    objMapName_FID.clear();
    objMapFID_PID.clear();
    objMapFID_Name.clear();
    MapLeftTreePath.clear();
    folderByPlace.clear();
}

void discardScanResult()
{
    freeFolders();
    freeMailItems();
    listOfPathOfOnlyForTree.clear();
}
