#include "platform/linux/imaging/ImagingHelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <utility>

namespace nimbrel {
namespace {

ImageError errorOf(HelperProcess::Failure failure) {
  switch (failure) {
    case HelperProcess::Failure::late:
      return {QStringLiteral("la imagen tarda demasiado")};
    case HelperProcess::Failure::stopped:
      return {QStringLiteral("ya no hace falta")};
    case HelperProcess::Failure::gone:
    case HelperProcess::Failure::broken:
      break;
  }
  return {QStringLiteral("el proceso de imágenes ha fallado")};
}

}  // namespace

ImagingHelper::ImagingHelper(QString program, ImagingSkill skill, std::chrono::milliseconds timeLimit)
    : program_(std::move(program)), skill_(skill), timeLimit_(timeLimit) {}

bool ImagingHelper::ensureStarted() {
  if (process_ && process_->isAlive()) return true;
  const QString skill = skill_ == ImagingSkill::text ? QStringLiteral("text") : QStringLiteral("codec");
  process_ = HelperProcess::start(program_, {skill, QString::number(QCoreApplication::applicationPid())});
  return process_.has_value();
}

std::variant<QByteArray, HelperProcess::Failure> ImagingHelper::exchange(const QByteArray& frame,
                                                                         const StopToken& stop) {
  auto reply = process_->exchange(frame, std::chrono::steady_clock::now() + timeLimit_, stop);
  if (std::holds_alternative<HelperProcess::Failure>(reply)) process_.reset();
  return reply;
}

std::variant<ImagingReply, ImageError> ImagingHelper::ask(const ImagingRequest& request,
                                                          const StopToken& stop) {
  const QByteArray frame = encodeRequest(request);
  if (frame.size() > static_cast<qsizetype>(kMaxImagingFrame))
    return ImageError{QStringLiteral("la imagen es demasiado grande")};
  const std::scoped_lock lock(mutex_);
  std::variant<QByteArray, HelperProcess::Failure> answer = HelperProcess::Failure::gone;
  // A helper that was idle may be ending just now; a new one has no reason to.
  for (int attempt = 0; attempt < 2 && answer == decltype(answer)(HelperProcess::Failure::gone); ++attempt) {
    if (!ensureStarted()) return ImageError{QStringLiteral("no se pudo iniciar el proceso de imágenes")};
    answer = exchange(frame, stop);
  }
  if (const auto* const failure = std::get_if<HelperProcess::Failure>(&answer)) return errorOf(*failure);
  auto reply = decodeReply(std::get<QByteArray>(answer));
  if (!reply) {
    process_.reset();
    return errorOf(HelperProcess::Failure::broken);
  }
  if (!reply->error.isEmpty()) return ImageError{reply->error};
  return *std::move(reply);
}

void ImagingHelper::end() {
  const std::scoped_lock lock(mutex_);
  process_.reset();
}

std::optional<pid_t> ImagingHelper::processId() {
  const std::scoped_lock lock(mutex_);
  if (!process_) return std::nullopt;
  return process_->processId();
}

QString imagingHelperProgram() {
  const QString name = QStringLiteral("nimbrel-imaging");
  const QDir here(QCoreApplication::applicationDirPath());
  const QString beside = here.filePath(name);
  if (QFileInfo(beside).isExecutable()) return beside;
  return QDir::cleanPath(here.filePath(QStringLiteral("../libexec/nimbrel/") + name));
}

}  // namespace nimbrel
