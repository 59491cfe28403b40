#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QStringList>
#include <optional>

#include "platform/InstanceRequests.h"

/// What processes of the same user say to the running instance, and it to them: one frame each way, a length
/// (four bytes, little endian) and that many bytes, which begin with the version of all this. Each side takes
/// the other's bytes for hostile: a frame that is not exactly one message is none.
namespace nimbrel {

struct InstanceRequest final {
  enum class Kind : quint8 { show = 1, showCollections, openUrls, quit, perform };

  Kind kind = Kind::show;
  /// For `openUrls`.
  QStringList urls;
  /// For `perform`.
  IntentCall call;

  bool operator==(const InstanceRequest&) const = default;
};

/// The longest requests that are read, in bytes: no command line holds more.
inline constexpr qsizetype kMaxInstanceRequest = qsizetype(1) << 20U;
/// The longest replies: all the texts that a search gives, each as long as a clip may be.
inline constexpr qsizetype kMaxInstanceReply = qsizetype(32) << 20U;
/// More strings than this are in no message.
inline constexpr qsizetype kMaxInstanceStrings = 10'000;

/// A request with its length before it. URLs for which there is no room are left out, and of an argument as
/// much is sent as shows that it is too long.
[[nodiscard]] QByteArray instanceFrame(const InstanceRequest& request);
/// A reply with its length before it; one that is too long for a frame becomes the error
/// `InstanceClient::kNoAnswer`.
[[nodiscard]] QByteArray instanceFrame(const IntentReply& reply);

/// What a frame says, without its length; nothing when that is no such message, or one of another version.
[[nodiscard]] std::optional<InstanceRequest> decodedInstanceRequest(const QByteArray& body);
[[nodiscard]] std::optional<IntentReply> decodedInstanceReply(const QByteArray& body);

/// Puts one frame together from what arrives, and takes no memory for what has not.
class InstanceFrameReader final {
 public:
  /// `longest` is the length, in bytes, beyond which a frame is refused.
  explicit InstanceFrameReader(qsizetype longest) : longest_(longest) {}

  /// Takes what there is of the frame, and nothing behind it.
  void readFrom(QIODevice& device);

  /// Whether a frame was announced that is too long to be read.
  [[nodiscard]] bool isRefused() const { return refused_; }
  /// The frame without its length; nothing before all of it is there.
  [[nodiscard]] std::optional<QByteArray> body() const;

 private:
  [[nodiscard]] qsizetype missing() const;
  void take(const QByteArray& bytes);

  const qsizetype longest_;
  QByteArray header_;
  std::optional<qsizetype> length_;
  QByteArray body_;
  bool refused_ = false;
};

}  // namespace nimbrel
