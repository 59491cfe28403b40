#include "capture/ImageTextReader.h"

#include <algorithm>

#include "capture/model/Log.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

std::optional<QString> recognizeText(SideFiles& files, TextRecognizer& recognizer, const QString& imageFile,
                                     const StopToken& stop) {
  auto data = files.loadImage(imageFile);
  if (!data) return std::nullopt;
  const WipedBytes picture(std::move(*data));
  auto outcome = recognizer.recognizeText(picture.bytes(), stop);
  if (const auto* const error = std::get_if<ImageError>(&outcome)) {
    if (!stop.stopRequested()) logFailure("OCR", error->description);
    return std::nullopt;
  }
  return joinedLines(std::get<QList<RecognizedLine>>(std::move(outcome)));
}

}  // namespace

QString joinedLines(QList<RecognizedLine> lines) {
  std::stable_sort(lines.begin(), lines.end(), [](const RecognizedLine& a, const RecognizedLine& b) {
    return a.box.center().y() < b.box.center().y();
  });
  QStringList texts;
  for (const RecognizedLine& line : lines)
    texts.append(line.text);
  return texts.join(u'\n');
}

ImageTextReader::ImageTextReader(SideFiles& files, TextRecognizer& recognizer)
    : files_(files),
      recognizer_(recognizer),
      queue_(QStringLiteral("Nimbrel.ocr"), SerialQueue::Priority::utility) {}

ImageTextReader::~ImageTextReader() {
  stop_.requestStop();
}

void ImageTextReader::enqueue(const QUuid& id, const QString& imageFile) {
  const bool known =
      std::any_of(ocrPending_.begin(), ocrPending_.end(), [&](const Task& task) { return task.id == id; });
  if (known) return;
  ocrPending_.append({++lastNumber_, id, imageFile});
  tellPending();
  if (!reading_) startNext();
}

void ImageTextReader::cancel(const QUuid& id) {
  if (reading_ && !ocrPending_.isEmpty() && ocrPending_.first().id == id) stop_.requestStop();
  if (ocrPending_.removeIf([&](const Task& task) { return task.id == id; }) > 0) tellPending();
}

void ImageTextReader::cancelAll() {
  if (ocrPending_.isEmpty()) return;
  if (reading_) stop_.requestStop();
  ocrPending_.clear();
  tellPending();
}

void ImageTextReader::tellPending() const {
  if (!pendingHandler_) return;
  QList<QUuid> ids;
  for (const Task& task : ocrPending_)
    ids.append(task.id);
  pendingHandler_(ids);
}

void ImageTextReader::startNext() {
  reading_ = !ocrPending_.isEmpty();
  if (!reading_) return;
  stop_ = StopSource();
  queue_.post([this, task = ocrPending_.first(), stop = stop_.token()] {
    calls_.post([this, task, text = recognizeText(files_, recognizer_, task.imageFile, stop)] {
      finish(task, text);
    });
  });
}

void ImageTextReader::finish(const Task& task, const std::optional<QString>& text) {
  const bool wanted =
      ocrPending_.removeIf([&](const Task& pending) { return pending.number == task.number; }) > 0;
  if (wanted && text && handler_) handler_(task.id, *text);
  if (wanted) tellPending();
  startNext();
}

}  // namespace nimbrel
