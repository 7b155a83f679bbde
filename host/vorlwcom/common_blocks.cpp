#include <vorlwcom/common_block_names.h>
#include <vorlwcom/export.h>

#define VORLWCOM_DEFINE_ACCESSOR(name)      \
  extern "C" VORLWCOM_API void* name();     \
  extern "C" VORLWCOM_API void* name() {    \
    static double block = 0.0; /* unread */ \
    return &block;                          \
  }

VORLWCOM_COMMON_BLOCK_ACCESSORS(VORLWCOM_DEFINE_ACCESSOR)
