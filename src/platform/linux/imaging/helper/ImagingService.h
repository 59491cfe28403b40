#pragma once

#include "platform/linux/imaging/ImagingMessages.h"
#include "platform/linux/imaging/helper/LineRecognizer.h"

namespace nimbrel {

/// Does what a request asks for. `recognizer` is null in a helper that does not read text.
[[nodiscard]] ImagingReply answer(const ImagingRequest& request, LineRecognizer* recognizer);

}  // namespace nimbrel
