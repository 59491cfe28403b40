#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

#include "capture/model/SensitivityLevel.h"

namespace nimbrel {

/// Tells texts that are secret, or hold a secret, from all others: credentials by their form, card and
/// account numbers by their check digits, one-time codes by their length. Pure functions; any thread. Nothing
/// fails: what cannot be told is no secret.
class SensitiveDetector final {
 public:
  SensitiveDetector() = delete;

  /// The applications whose numbers of six to eight digits are certainly one-time codes, by bundle
  /// identifier.
  [[nodiscard]] static const QStringList& codeSourceApps();

  /// Grades a text as a whole, white space around it left out. A text of more than 8192 bytes in UTF-8 is
  /// none.
  /// - `sourceBundleID`: the application that the text was copied in, where it is known.
  /// - `detectCodes`: whether six to eight ASCII digits are a one-time code.
  [[nodiscard]] static SensitivityLevel classify(QStringView text,
                                                 const std::optional<QString>& sourceBundleID,
                                                 bool detectCodes);

  /// Whether a text has several lines, those around it that are blank left out: `classifyText` then sees more
  /// than `classify`.
  [[nodiscard]] static bool hasSeveralLines(QStringView text);

  /// Grades a text of any length; one of several lines is hard when any of its lines is, or any word of 20 to
  /// 200 characters in it without the punctuation around it, or when a line holds a card number or an IBAN.
  /// One-time codes count only in a text of one line.
  [[nodiscard]] static SensitivityLevel classifyText(QStringView text,
                                                     const std::optional<QString>& sourceBundleID);
};

}  // namespace nimbrel
