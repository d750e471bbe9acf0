#include "browse/preview.h"

std::optional<PreviewText> previewOfOlmMessage(const QString &, const QString &)
{
    return std::nullopt;
}
