#include "capture/CaptureServices.h"

namespace nimbrel {

SensitivityLevel NoTextGrader::classify(const QString&, const std::optional<QString>&, bool) const {
  return SensitivityLevel::none;
}

}  // namespace nimbrel
