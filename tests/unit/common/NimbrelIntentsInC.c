#include "platform/common/NimbrelIntents.h"

static void completed(void* context, const NimbrelIntentReply* reply) {
  *(size_t*)context = reply->error[0] == '\0' && !reply->paused ? reply->textCount : 0;
}

/* As a caller in C would ask; it is compiled and never called. */
size_t nimbrel_count_collections(void) {
  size_t count = 0;
  nimbrel_perform_intent(NimbrelIntentListCollections, NULL, &count, completed);
  return count;
}
