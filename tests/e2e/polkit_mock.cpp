// Stands for the system's authority (org.freedesktop.PolicyKit1) and its agent: polkit_mock MODE
//   ask        opens a window for the password, which is "nimbrel"
//   yes, no    answers at once
//   dismissed  answers as for a user who cancelled
//   agentless  answers that the user would have to be asked
//   unknown    does not know the action
//   nonsense   answers something else
//   mute       is there, and never answers the question
//   deaf       answers nothing at all
//   dies       ends in the middle of the question
// Prints each question's action and text flags, one a line.
#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QLineEdit>
#include <QVBoxLayout>
#include <cstdio>
#include <cstdlib>

struct Answer {
  bool authorized = false;
  bool challenge = false;
  QMap<QString, QString> details;
};
Q_DECLARE_METATYPE(Answer)

QDBusArgument& operator<<(QDBusArgument& argument, const Answer& answer) {
  argument.beginStructure();
  argument << answer.authorized << answer.challenge << answer.details;
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Answer& answer) {
  argument.beginStructure();
  argument >> answer.authorized >> answer.challenge >> answer.details;
  argument.endStructure();
  return argument;
}

namespace {

using Bus = QDBusConnection;

const Answer kDismissed{.details = {{QStringLiteral("polkit.dismissed"), QStringLiteral("true")}}};

/// The agent's window.
class Prompt final : public QWidget {
 public:
  Prompt(QDBusMessage question, Bus bus) : question_(std::move(question)), bus_(std::move(bus)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("polkit-mock"));
    auto* const field = new QLineEdit(this);
    field->setEchoMode(QLineEdit::Password);
    connect(field, &QLineEdit::returnPressed, this,
            [this, field] { reply({.authorized = field->text() == QStringLiteral("nimbrel")}); });
    (new QVBoxLayout(this))->addWidget(field);
    resize(400, 200);
  }

 protected:
  void keyPressEvent(QKeyEvent*) override { reply(kDismissed); }

 private:
  void reply(const Answer& answer) {
    bus_.send(question_.createReply(QVariant::fromValue(answer)));
    close();
  }

  QDBusMessage question_;
  Bus bus_;
};

class Authority final : public QDBusVirtualObject {
 public:
  explicit Authority(QString mode) : mode_(std::move(mode)) {}

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const Bus& bus) override {
    if (mode_ == QStringLiteral("deaf")) return true;
    if (message.member() == QStringLiteral("Get"))
      return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(QStringLiteral("mock")))));
    if (message.member() == QStringLiteral("CancelCheckAuthorization")) {
      say(QStringLiteral("cancelled"));
      return bus.send(message.createReply());
    }
    if (message.member() != QStringLiteral("CheckAuthorization")) return false;
    say(message.arguments().value(1).toString());
    answer(message, bus);
    return true;
  }

 private:
  static void say(const QString& what) {
    std::printf("%s\n", qUtf8Printable(what));
    std::fflush(stdout);
  }

  void answer(const QDBusMessage& question, const Bus& bus) {
    const auto reply = [&](const Answer& given) {
      bus.send(question.createReply(QVariant::fromValue(given)));
    };
    if (mode_ == QStringLiteral("ask")) (new Prompt(question, bus))->show();
    if (mode_ == QStringLiteral("yes")) reply({.authorized = true});
    if (mode_ == QStringLiteral("no")) reply({});
    if (mode_ == QStringLiteral("dismissed")) reply(kDismissed);
    if (mode_ == QStringLiteral("agentless")) reply({.challenge = true});
    if (mode_ == QStringLiteral("nonsense")) bus.send(question.createReply(QStringLiteral("yes")));
    if (mode_ == QStringLiteral("unknown"))
      bus.send(question.createErrorReply(QStringLiteral("org.freedesktop.PolicyKit1.Error.Failed"),
                                         QStringLiteral("Action is not registered")));
    if (mode_ == QStringLiteral("dies")) std::_Exit(0);
  }

  QString mode_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  qDBusRegisterMetaType<Answer>();
  qDBusRegisterMetaType<QMap<QString, QString>>();
  // On the bus of the tests, which stands for the system's too.
  Bus bus = Bus::sessionBus();
  Authority authority(QString::fromLocal8Bit(argc > 1 ? argv[1] : "ask"));
  if (!bus.registerVirtualObject(QStringLiteral("/org/freedesktop/PolicyKit1/Authority"), &authority) ||
      !bus.registerService(QStringLiteral("org.freedesktop.PolicyKit1")))
    return 1;
  std::puts("ready");
  std::fflush(stdout);
  return QApplication::exec();
}
