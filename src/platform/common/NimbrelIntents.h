#pragma once

/* C, for the parts of the program that are written in another language. NOLINTBEGIN(modernize-*) */

#include <stdbool.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What can be done with the history. */
enum {
  NimbrelIntentCopyLatestClip = 0,
  NimbrelIntentSearchHistory = 1,
  NimbrelIntentToggleCapture = 2,
  NimbrelIntentPasteFromCollection = 3,
  NimbrelIntentListCollections = 4
};
typedef int NimbrelIntent;

/** What came of it. Texts are UTF-8 and end with a null character; one within a text is replaced by U+FFFD.
 * All of it is valid only during the call that hands it over. No pointer is null. */
typedef struct {
  /** "" when it was done, or else the name of what went wrong, as "emptyHistory". */
  const char* error;
  /** For the user; may be "", also beside an error, for which the caller then has its own text. */
  const char* message;
  /** Texts of clips, or names of collections. */
  const char* const* texts;
  size_t textCount;
  /** Whether capture is paused now, when that was asked for. */
  bool paused;
} NimbrelIntentReply;

typedef void (*NimbrelIntentCompletion)(void* context, const NimbrelIntentReply* reply);

/** Carries out an intent. Main thread. The completion is called exactly once, on the main thread, now or
 * later; with the error "unavailable" when there is no such intent or nobody who carries it out, or the
 * program ends before. `argument` is what to look for or the name of the collection, in UTF-8, and may be
 * null: bytes that are no UTF-8 are replaced, and one that is far too long gives the error "argumentTooLong".
 */
void nimbrel_perform_intent(NimbrelIntent intent, const char* argument, void* context,
                            NimbrelIntentCompletion completion);

#ifdef __cplusplus
}
#endif

/* NOLINTEND(modernize-*) */
