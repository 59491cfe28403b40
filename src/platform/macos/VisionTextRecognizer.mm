#include "platform/macos/VisionTextRecognizer.h"

#import <Foundation/Foundation.h>
#import <Vision/Vision.h>

#include "platform/macos/ImageIOCodec.h"
#include "platform/macos/values/RecognizedText.h"

namespace nimbrel::macos {
namespace {

VNRecognizeTextRequest* accurateRequest() {
  VNRecognizeTextRequest* const request = [[VNRecognizeTextRequest alloc] init];
  request.recognitionLevel = VNRequestTextRecognitionLevelAccurate;
  request.usesLanguageCorrection = YES;
  request.automaticallyDetectsLanguage = YES;
  return request;
}

QList<TextObservation> observationsOf(VNRecognizeTextRequest* request) {
  QList<TextObservation> found;
  for (VNRecognizedTextObservation* observation in request.results) {
    VNRecognizedText* const best = [observation topCandidates:1].firstObject;
    if (best) found.append({QString::fromNSString(best.string), QRectF::fromCGRect(observation.boundingBox)});
  }
  return found;
}

}  // namespace

std::variant<QList<RecognizedLine>, ImageError> VisionTextRecognizer::recognizeText(const QByteArray& image,
                                                                                    const StopToken& stop) {
  @autoreleasepool {
    // Vision decodes for itself: what would not be decoded elsewhere is kept from it.
    const auto size = uprightSize(image);
    if (const auto* const error = std::get_if<ImageError>(&size)) return *error;
    VNRecognizeTextRequest* const request = accurateRequest();
    VNImageRequestHandler* const handler = [[VNImageRequestHandler alloc] initWithData:image.toNSData()
                                                                               options:@{}];
    const StopCallback cancel(stop, [request] { [request cancel]; });
    NSError* error = nil;
    if (![handler performRequests:@[ request ] error:&error])
      return ImageError{QString::fromNSString(error.localizedDescription)};
    // A request that was cancelled may end without an error, and without its results.
    if (stop.stopRequested()) return ImageError{};
    return linesTopFirst(observationsOf(request), std::get<QSize>(size));
  }
}

QStringList recognizableLanguages() {
  @autoreleasepool {
    QStringList languages;
    for (NSString* language in [accurateRequest() supportedRecognitionLanguagesAndReturnError:nil])
      languages.append(QString::fromNSString(language));
    return languages;
  }
}

}  // namespace nimbrel::macos
