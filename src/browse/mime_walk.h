#pragma once

#include "browse/preview_dialect.h"

/// Walks over the bytes of one message. Never fails; what is not found is empty. Takes time that grows with the
/// message's size alone.
WalkedMessage walkMessage(std::string_view source, const PreviewDialect &dialect);
