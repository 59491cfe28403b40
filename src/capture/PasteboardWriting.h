#pragma once

#include "capture/CaptureServices.h"
#include "capture/model/ClipItem.h"
#include "capture/model/SnippetPlaceholders.h"
#include "platform/PasteboardContent.h"

namespace nimbrel {

/// What a clip becomes on the pasteboard: files as file URLs and their paths; text with its placeholders
/// expanded and, unless `plainOnly` is set or the clip is sensitive, its formatted form; images as their
/// stored bytes. A missing file leaves out what it held.
[[nodiscard]] PasteboardContent pasteboardContentOf(const ClipItem& clip, bool plainOnly, SideFiles& files,
                                                    const SnippetValues& snippets);

}  // namespace nimbrel
