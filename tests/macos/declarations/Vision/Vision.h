#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NSString* VNImageOption NS_STRING_ENUM;

typedef NS_ENUM(NSInteger, VNRequestTextRecognitionLevel) {
  VNRequestTextRecognitionLevelAccurate = 0,
};

@interface VNRequest : NSObject
- (void)cancel;
@end

@interface VNRecognizedText : NSObject
@property(readonly, copy) NSString* string;
@end

@interface VNRecognizedTextObservation : NSObject
@property(readonly) CGRect boundingBox;
- (NSArray<VNRecognizedText*>*)topCandidates:(NSUInteger)maxCandidateCount;
@end

@interface VNRecognizeTextRequest : VNRequest
@property VNRequestTextRecognitionLevel recognitionLevel;
@property BOOL usesLanguageCorrection;
@property BOOL automaticallyDetectsLanguage;
@property(nullable, readonly, copy) NSArray<VNRecognizedTextObservation*>* results;
- (nullable NSArray<NSString*>*)supportedRecognitionLanguagesAndReturnError:(NSError* _Nullable*)error;
@end

@interface VNImageRequestHandler : NSObject
- (instancetype)initWithData:(NSData*)imageData options:(NSDictionary<VNImageOption, id>*)options;
- (BOOL)performRequests:(NSArray<VNRequest*>*)requests error:(NSError* _Nullable*)error;
@end

#pragma clang assume_nonnull end
