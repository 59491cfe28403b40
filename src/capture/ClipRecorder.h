#pragma once

#include <QHash>
#include <QUuid>
#include <functional>

#include "capture/CaptureDecision.h"
#include "capture/CaptureServices.h"
#include "capture/ClipHistory.h"
#include "capture/Thumbnails.h"
#include "platform/Clock.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// What recording works with; everything outlives it.
struct ClipRecorderParts final {
  const SettingsValues& settings;
  const Clock& clock;
  TextGrader& grader;
  SideFiles& files;
  ImageTextQueue& imageTexts;
  Thumbnails& thumbnails;
  /// Makes the id of a new clip.
  std::function<QUuid()> makeId;
};

/// Puts what was copied into the history: as a new clip, or as the one that is there already. What takes time
/// (formatted text, long texts, images) follows later and ends up where it was copied. Main thread.
class ClipRecorder final {
 public:
  /// The history outlives this.
  ClipRecorder(const ClipRecorderParts& parts, ClipHistory& history) : parts_(parts), history_(history) {}

  void record(const CaptureDecision& decision);

  /// Forgets what has been recorded and is not in the history yet.
  void forgetPending() { forgotten_ = history_.takePlace(); }

  /// The text found in the image of a clip: kept with it, unless the user wants no clip with a secret and
  /// this one holds a credential.
  void keepRecognizedText(const QUuid& id, const QString& text, SensitivityLevel level);

 private:
  using Place = HistoryList::Place;

  void take(const CaptureNothing& nothing);
  void take(const CaptureFiles& captured);
  void take(const CaptureText& captured);
  void take(const CaptureImage& captured);

  [[nodiscard]] ClipItem newClip(const ClipSource& source) const;
  void keepText(ClipItem clip, SensitivityLevel level, const std::optional<RichContent>& rich, Place place);
  void insert(const ClipItem& clip, Place place);
  void recordAgain(qsizetype row, const ClipItem& fresh, Place place);
  void moveUp(qsizetype row, Timestamp date, Place place);
  void dropUnwanted(const ClipItem& fresh);
  void keepFormat(const QUuid& id, const RichContent& rich);
  void attachFormat(const QUuid& id, const QString& file, const QString& hash);
  void keepImage(const PreparedImage& image, ClipItem clip, Place place);
  void insertImage(const PreparedImage& image, const QString& file, ClipItem clip, Place place);

  ClipRecorderParts parts_;
  ClipHistory& history_;
  /// What was copied before this place is not wanted any more.
  Place forgotten_ = 0;
  /// The hashes of formats that are being stored, by the clips they belong to.
  QHash<QUuid, QString> comingFormats_;
};

}  // namespace nimbrel
