#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <atomic>
#include <mutex>
#include <optional>

#include "capture/CaptureServices.h"
#include "platform/AccessibilityTrust.h"
#include "platform/ApplicationCatalog.h"
#include "platform/Clock.h"
#include "platform/DeviceAuthenticator.h"
#include "platform/HotKeyRegistrar.h"
#include "platform/ImageCodec.h"
#include "platform/InstanceHost.h"
#include "platform/KeyReader.h"
#include "platform/KeystrokePoster.h"
#include "platform/LoginItem.h"
#include "platform/Opener.h"
#include "platform/PanelWindow.h"
#include "platform/Pasteboard.h"
#include "platform/PreviewPanel.h"
#include "platform/SecretStore.h"
#include "platform/StatusItem.h"
#include "platform/TextRecognizer.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "storage/RandomSource.h"

/// The ports without a desktop: they do what they are told and remember what they were asked.
namespace nimbrel::testing {

class ManualClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::system_clock::time_point now() const override { return wall; }
  [[nodiscard]] std::chrono::steady_clock::time_point steadyNow() const override { return steady; }
  void advance(std::chrono::milliseconds time) {
    wall += time;
    steady += time;
  }

  // 2026-03-14 15:09:26 UTC, to the half second, which a double holds exactly.
  std::chrono::system_clock::time_point wall{std::chrono::milliseconds(1773500966500)};
  std::chrono::steady_clock::time_point steady{std::chrono::hours(1)};
};

/// A pasteboard that other programs "copy" to with `copy`.
class FakePasteboard final : public Pasteboard {
 public:
  [[nodiscard]] Access access() const override { return given; }
  void setReadPolicy(const PasteboardReadPolicy& wanted) override { policy = wanted; }
  [[nodiscard]] qint64 changeCount() const override { return count; }
  [[nodiscard]] QList<PasteboardSnapshot> changesAfter(qint64 after) override;
  [[nodiscard]] std::optional<QString> currentText() const override { return text; }
  std::optional<qint64> write(const PasteboardContent& content) override;
  std::optional<qint64> clearIfUnchanged(qint64 expected) override;
  void setChangeHandler(std::function<void()> wanted) override { handler = std::move(wanted); }

  /// Somebody else's change; the store hears of it at its next tick.
  void copy(PasteboardSnapshot snapshot);
  void copyText(const QString& copied);

  Access given = Access::standard;
  PasteboardReadPolicy policy;
  qint64 count = 0;
  std::optional<QString> text;
  QList<PasteboardSnapshot> ready;
  QList<PasteboardContent> writes;
  int clears = 0;
  bool failWrites = false;
  std::function<void()> handler;
};

class FakeWorkspace final : public Workspace {
 public:
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override { return front; }
  [[nodiscard]] std::optional<RunningApplication> frontmostOtherApplication() const override { return other; }
  std::optional<RunningApplication> front;
  std::optional<RunningApplication> other;
};

class FakeHotKeyRegistrar final : public HotKeyRegistrar {
 public:
  struct Combo {
    quint32 keyCode;
    quint32 modifiers;
    bool operator==(const Combo&) const = default;
  };

  [[nodiscard]] bool registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) override;
  void unregisterHotKey(quint32 id) override { registered.remove(id); }
  void setPressHandler(std::function<void(quint32)> given) override { handler = std::move(given); }

  /// Combinations that another program holds.
  QList<Combo> taken;
  QHash<quint32, Combo> registered;
  std::function<void(quint32)> handler;
};

/// Reads what the test says, whatever the event.
class FakeKeyReader final : public KeyReader {
 public:
  [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent&) const override { return next; }
  std::optional<PressedKey> next;
};

class FakeKeystrokePoster final : public KeystrokePoster {
 public:
  void postPaste() override { ++pastes; }
  int pastes = 0;
};

class FakeAccessibilityTrust final : public AccessibilityTrust {
 public:
  [[nodiscard]] bool isTrusted() const override { return trusted; }
  bool request() override {
    ++requests;
    return hasSettings;
  }
  bool trusted = true;
  bool hasSettings = true;
  int requests = 0;
};

/// Remembers what was opened.
class FakeOpener final : public Opener {
 public:
  bool openUrl(const QUrl& url) override { return note(url.toString()); }
  bool reveal(const QList<QUrl>& files) override {
    return note(QStringLiteral("reveal ") + files.value(0).toString());
  }
  bool openPrivacySettings() override { return note(QStringLiteral("privacy")); }
  bool openKeyStore() override { return note(QStringLiteral("keys")); }

  QStringList opened;
  /// Nothing is installed.
  bool bare = false;

 private:
  bool note(const QString& what) {
    if (!bare) opened.append(what);
    return !bare;
  }
};

class FakeStatusItem final : public StatusItem {
 public:
  void show(const StatusItemState& shown) override { state = shown; }
  void setActivationHandler(std::function<void()> given) override { handler = std::move(given); }
  StatusItemState state;
  std::function<void()> handler;
};

class FakeSecretStore final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem& item) override;
  [[nodiscard]] int add(const SecretItem& item, const QByteArray& secret) override;

  QHash<QString, QByteArray> secrets;
  /// Not 0: looking up, respectively adding, fails with this.
  int findStatus = 0;
  int addStatus = 0;
  bool isThere = true;
  int finds = 0;
  int adds = 0;
};

class FakeUserDefaults final : public UserDefaults {
 public:
  [[nodiscard]] std::optional<DefaultsValue> value(const QString& key) const override {
    return values.contains(key) ? std::optional(values.value(key)) : std::nullopt;
  }
  void set(const QString& key, const DefaultsValue& given) override {
    values.insert(key, given);
    written.append(key);
  }
  void synchronize() override { stored = values; }
  [[nodiscard]] bool isIntact() const override { return intact; }
  void markDamaged() override { intact = false; }
  [[nodiscard]] bool remove(const QString& key) override {
    if (!failWrites) values.remove(key);
    return !failWrites;
  }
  QHash<QString, DefaultsValue> values;
  /// The values that would be there after a restart.
  QHash<QString, DefaultsValue> stored;
  /// The keys that were set, in order.
  QStringList written;
  bool intact = true;
  bool failWrites = false;
};

class FakeLoginItem final : public LoginItem {
 public:
  [[nodiscard]] bool isEnabled() const override { return enabled; }
  [[nodiscard]] std::optional<QString> setEnabled(bool wanted) override {
    if (!failure.isEmpty()) return failure;
    enabled = wanted;
    return std::nullopt;
  }
  std::atomic<bool> enabled = false;
  /// Not empty: every change fails with this.
  QString failure;
};

class FakeApplicationCatalog final : public ApplicationCatalog {
 public:
  [[nodiscard]] QList<InstalledApplication> applications() override { return installed; }
  [[nodiscard]] QIcon icon(const InstalledApplication& application) const override {
    ++looked;
    return icons.value(application.icon);
  }
  /// How many icons were looked for.
  mutable int looked = 0;
  QList<InstalledApplication> installed;
  QHash<QString, QIcon> icons;
};

class FailingRandom final : public RandomSource {
 public:
  [[nodiscard]] std::optional<QByteArray> bytes(int) override { return std::nullopt; }
};

/// A window that is shown as an ordinary one; the focus comes back when the test says so.
class FakePanelWindow final : public PanelWindow {
 public:
  explicit FakePanelWindow(QWidget& widget) : widget_(widget) {}

  [[nodiscard]] Backdrop backdrop() override { return Backdrop::opaque; }
  [[nodiscard]] QRect frame() const override;
  void setFrame(const QRect& frame) override;
  void setPanelArea(const QRect&) override {}
  void present() override;
  void dismiss(bool returnFocus) override;
  void whenFocusReturned(std::function<void(bool)> done) override { focusHandler = std::move(done); }
  void setResignHandler(std::function<void()> handler) override { resign = std::move(handler); }

  void stepBack() override { ++stepsBack; }
  void comeForward() override { ++stepsForward; }

  std::function<void()> resign;
  std::function<void(bool)> focusHandler;
  int stepsBack = 0;
  int stepsForward = 0;
  QList<bool> dismissals;

 private:
  QWidget& widget_;
};

/// A desktop on which nobody else asks anything.
class FakeInstanceHost final : public InstanceHost {
 public:
  [[nodiscard]] Claim claim(const QStringList&) override { return Claim::first; }
  void setRequests(const InstanceRequests&) override {}
  void announceCapture(bool paused) override { announced.append(paused); }

  QList<bool> announced;
};

/// Asks nobody: the test answers.
class FakeDeviceAuthenticator final : public DeviceAuthenticator {
 public:
  void canAuthenticate(std::function<void(std::optional<QString>)> done) override {
    if (slow)
      waiting_ = std::move(done);
    else
      done(obstacle);
  }
  void answerWhetherItCan() { std::exchange(waiting_, {})(obstacle); }
  void authenticate(const AuthenticationReason& reason,
                    std::function<void(AuthenticationReply)> done) override {
    asked.append(reason.text);
    answer = std::move(done);
  }
  void reply(AuthenticationReply::Outcome outcome, const QString& detail = {}) {
    std::exchange(answer, {})({outcome, detail});
  }

  std::optional<QString> obstacle;
  /// Whether it can be asked is told later.
  bool slow = false;
  /// The reasons given, in order.
  QStringList asked;
  std::function<void(AuthenticationReply)> answer;

 private:
  std::function<void(std::optional<QString>)> waiting_;
};

/// A window that nobody sees.
class FakePreviewPanel final : public PreviewPanel {
 public:
  [[nodiscard]] bool isVisible() const override { return visible; }
  void orderFront(const QRect&) override { visible = true; }
  void reload(const std::optional<QUrl>& wanted) override { item = wanted; }
  void close() override {
    visible = false;
    item.reset();
    if (closeHandler) closeHandler();
  }
  void setCloseHandler(std::function<void()> handler) override { closeHandler = std::move(handler); }

  bool visible = false;
  std::optional<QUrl> item;
  std::function<void()> closeHandler;
};

/// Grades by exact text.
class FakeTextGrader final : public TextGrader {
 public:
  [[nodiscard]] SensitivityLevel classify(const QString& text, const std::optional<QString>& sourceBundleID,
                                          bool detectCodes) const override;
  void classifyText(const QString& text, const std::optional<QString>& sourceBundleID, Graded done) override;

  /// Tells the grades that were held back, in order.
  void finish();

  QHash<QString, SensitivityLevel> grades;
  /// Of texts with their lines.
  QHash<QString, SensitivityLevel> lineGrades;
  /// Holds back what takes time.
  bool slow = false;
  mutable std::optional<QString> lastSource;
  mutable bool lastDetectCodes = false;
  /// The texts that were graded with their lines.
  QStringList gradedTexts;

 private:
  QList<std::function<void()>> heldBack_;
};

/// Keeps files in memory. What takes time is done at once, or when the test says so.
class FakeSideFiles final : public SideFiles {
 public:
  void prepareImage(const QByteArray& data,
                    std::function<void(const std::optional<PreparedImage>&)> done) override;
  void storeImage(const PreparedImage& image, Stored done) override;
  void storeRich(const RichContent& content, Stored done) override;
  [[nodiscard]] std::optional<QByteArray> loadImage(const QString& file) override;
  [[nodiscard]] std::optional<QByteArray> loadRich(const QString& file) override;
  void remove(const SideFileNames& names) override;

  /// Does what was held back, in order.
  void finish();

  QHash<QString, QByteArray> images;
  QHash<QString, QByteArray> rich;
  /// Holds back what takes time.
  bool slow = false;
  bool failWrites = false;
  /// Images that cannot be decoded.
  QSet<QByteArray> unreadable;

 private:
  void run(std::function<void()> task);

  /// Files go when the database says so, on its own thread.
  std::mutex mutex_;
  QList<std::function<void()>> heldBack_;
  int count_ = 0;
};

/// Sees in an image what the test put there.
class FakeImageCodec final : public ImageCodec {
 public:
  [[nodiscard]] std::variant<Encoded, ImageError> encodePng(const QByteArray& image, int maxPixelSize,
                                                            const StopToken&) override;
  [[nodiscard]] std::variant<QImage, ImageError> thumbnail(const QByteArray& image, int maxPixelSize,
                                                           const StopToken& stop) override;
  [[nodiscard]] std::variant<QByteArray, ImageError> convert(const QByteArray& image, Format format,
                                                             const StopToken&) override;

  /// Not empty: everything fails with this.
  QString error;
  /// Images that take for ever, until they are stopped.
  QSet<QByteArray> endless;
  /// Everything waits until it is switched off.
  std::atomic<bool> slow = false;
  std::atomic<int> thumbnails = 0;
};

/// Recognises what the test says.
class FakeTextRecognizer final : public TextRecognizer {
 public:
  [[nodiscard]] std::variant<QList<RecognizedLine>, ImageError> recognizeText(const QByteArray& image,
                                                                              const StopToken& stop) override;

  /// By the image's bytes; others have no text.
  QHash<QByteArray, QList<RecognizedLine>> lines;
  QString error;
  /// Waits for the stop, as over a picture that never ends.
  std::atomic<bool> endless = false;
  std::atomic<int> calls = 0;
};

class FakeImageTextQueue final : public ImageTextQueue {
 public:
  void setHandler(Recognized given) override { handler = std::move(given); }
  void enqueue(const QUuid& id, const QString&) override { queued.append(id); }
  void cancel(const QUuid& id) override { cancelled.append(id); }
  void cancelAll() override {
    cancelled += queued;
    queued.clear();
  }

  Recognized handler;
  QList<QUuid> queued;
  QList<QUuid> cancelled;
};

}  // namespace nimbrel::testing
