#include "app/Passphrase.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>

#include "app/CommandArguments.h"
#include "app/DescriptorDevice.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// Far longer than anybody types.
constexpr qsizetype kMaxBytes = 4096;
/// What Ctrl-C types.
constexpr char kInterrupt = '\x03';

/// Keeps a terminal from showing what is typed, and from ending the program at Ctrl-C before it shows it
/// again.
class NoEcho final {
 public:
  explicit NoEcho(int terminal) : terminal_(terminal) {
    known_ = tcgetattr(terminal, &before_) == 0;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
    known_ = known_ && tcsetattr(terminal, TCSAFLUSH, &silent) == 0;
  }
  ~NoEcho() {
    if (known_) tcsetattr(terminal_, TCSAFLUSH, &before_);
  }
  [[nodiscard]] bool isSilent() const { return known_; }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  const int terminal_;
  termios before_{};
  bool known_ = false;
};

/// The first line, without its end; nothing when it cannot be read or is endless.
std::optional<WipedBytes> firstLine(QIODevice& device) {
  WipedBytes line{QByteArray()};
  line.bytes().reserve(kMaxBytes);
  char byte = 0;
  while (line.bytes().size() < kMaxBytes) {
    const qint64 got = device.read(&byte, 1);
    if (got < 0) return std::nullopt;
    if (byte == kInterrupt && got > 0) return std::nullopt;
    if (got == 0 || byte == '\n') break;
    if (byte != '\r') line.bytes().append(byte);
  }
  if (line.bytes().size() == kMaxBytes) return std::nullopt;
  return line;
}

std::optional<WipedBytes> normalized(const WipedBytes& line) {
  auto text = strictUtf8(line.bytes());
  if (!text) return std::nullopt;
  QString normal = text->normalized(QString::NormalizationForm_C);
  WipedBytes bytes(normal.toUtf8());
  wipe(normal);
  wipe(*text);
  return bytes;
}

std::optional<WipedBytes> ask(int terminal, const QString& question) {
  DescriptorDevice device(terminal, QIODevice::ReadWrite);
  static_cast<void>(device.write(question.toUtf8()));
  auto line = [&] {
    const NoEcho silence(terminal);
    return silence.isSilent() ? firstLine(device) : std::nullopt;
  }();
  static_cast<void>(device.write("\n"));
  return line;
}

std::variant<WipedBytes, QString> checked(std::optional<WipedBytes> line, PassphraseUse use) {
  if (!line) return Texts::tr("no se puede leer la contraseña");
  if (line->bytes().isEmpty()) return Texts::tr("la contraseña está vacía");
  auto passphrase = normalized(*line);
  if (!passphrase) return Texts::tr("la contraseña no es UTF-8 válido");
  if (use == PassphraseUse::make && !hasCharacters(QString::fromUtf8(passphrase->bytes()), kMinPassphrase))
    return Texts::tr("la contraseña debe tener al menos %1 caracteres").arg(kMinPassphrase);
  return std::move(*passphrase);
}

std::variant<WipedBytes, QString> fromTerminal(PassphraseUse use) {
  const int terminal = ::open("/dev/tty", O_RDWR | O_CLOEXEC);
  if (terminal < 0) return Texts::tr("no hay terminal en la que pedir la contraseña; usa --passphrase-file");
  auto first = checked(ask(terminal, Texts::tr("Contraseña del archivo: ")), use);
  if (use == PassphraseUse::make && std::holds_alternative<WipedBytes>(first)) {
    const auto second = checked(ask(terminal, Texts::tr("Otra vez: ")), PassphraseUse::know);
    const auto* const repeated = std::get_if<WipedBytes>(&second);
    if (!repeated || repeated->bytes() != std::get<WipedBytes>(first).bytes())
      first = Texts::tr("las contraseñas no coinciden");
  }
  ::close(terminal);
  return first;
}

}  // namespace

std::variant<WipedBytes, QString> readPassphrase(const QString& file, PassphraseUse use) {
  if (file.isEmpty()) return fromTerminal(use);
  if (file == u"-") {
    DescriptorDevice input(STDIN_FILENO, QIODevice::ReadOnly);
    return checked(firstLine(input), use);
  }
  DescriptorDevice device(file);
  if (!device.isOpen())
    return Texts::tr("no se puede leer «%1»: %2").arg(printable(file), device.errorString());
  return checked(firstLine(device), use);
}

}  // namespace nimbrel
