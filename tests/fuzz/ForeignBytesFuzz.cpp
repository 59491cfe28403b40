#include <QByteArray>
#include <QStringList>
#include <cstdint>
#include <cstdlib>

#include "capture/LegacyImport.h"
#include "capture/model/ClipPayload.h"
#include "capture/model/IndexedClip.h"
#include "capture/model/TextRules.h"
#include "platform/common/InstanceMessages.h"
#include "platform/linux/DesktopFile.h"
#include "platform/linux/SelectionReadPlan.h"
#include "platform/linux/imaging/ImagingMessages.h"
#include "settings/model/SettingsCoding.h"

/// Bytes that other programs and damaged files hand to the program, through everything that reads them on the
/// way to a clip. Besides not crashing, what is read must hold what it promises.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nimbrel;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  if (const auto payload = decodePayload(bytes)) {
    if (decodePayload(encodePayload(*payload)) != payload) std::abort();
  }

  // What the imaging helper, or whoever has taken it over, says; and what is said to it.
  if (const auto reply = decodeReply(bytes)) {
    if (decodeReply(encodeReply(*reply)) != reply) std::abort();
  }
  if (const auto request = decodeRequest(bytes)) {
    if (decodeRequest(encodeRequest(*request)) != request) std::abort();
  }

  // What other processes of the user say to the instance, and whoever stands in its place to them.
  constexpr qsizetype kLengthOfFrame = 4;
  // Longer ones are cut where they are encoded, and are not the same afterwards.
  constexpr int kWhole = 64'000;
  if (const auto request = decodedInstanceRequest(bytes); request && bytes.size() <= kWhole) {
    if (decodedInstanceRequest(instanceFrame(*request).sliced(kLengthOfFrame)) != request) std::abort();
  }
  if (const auto reply = decodedInstanceReply(bytes); reply && bytes.size() <= kWhole) {
    if (decodedInstanceReply(instanceFrame(*reply).sliced(kLengthOfFrame)) != reply) std::abort();
  }

  if (const auto clips = clipsFromJson(bytes)) {
    for (const ClipItem& clip : *clips)
      static_cast<void>(clipFromJson(clipToJson(clip)));
  }

  if (const auto combo = decodedHotKeyCombo(bytes)) {
    if (decodedHotKeyCombo(encoded(*combo)) != combo || combo->displayString().isEmpty()) std::abort();
  }
  if (const auto apps = decodedIgnoredApps(bytes)) {
    if (decodedIgnoredApps(encoded(*apps)) != apps) std::abort();
  }
  if (const auto file = DesktopFile::parse(bytes)) {
    const QString program = programOf(file->value(QStringLiteral("Exec")));
    if (program.contains(u'/') || file->localValue(QStringLiteral("Name"), program).size() > bytes.size())
      std::abort();
  }

  SelectionReadPlan plan({.ignoredTypes = {},
                          .maxTextBytes = 1000,
                          .maxImageBytes = 1000,
                          .maxRichBytes = 1000,
                          .wantsRichText = true});
  plan.setTargets(QString::fromUtf8(bytes).split(u'\n'));
  for (int step = 0; plan.nextStep(); ++step) {
    if (step > 64) std::abort();
    plan.accept(bytes);
  }

  ClipItem clip;
  clip.text = decodeText(QStringLiteral("UTF8_STRING"), bytes);
  const IndexedClip indexed(clip);
  if (indexed.traits().characters > clip.text.size()) std::abort();
  const QByteArray folded = foldedText(clip.text);
  if (foldedText(QString::fromUtf8(folded)) != folded) std::abort();
  if (firstCharacters(clip.text, indexed.traits().characters) != clip.text) std::abort();
  return 0;
}
