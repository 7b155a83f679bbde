/// A host's common-block library that counts how often each accessor is called, and lacks one.
#include <vorlwcom/common_block_names.h>
#include <vorlwcom/export.h>

#define pvGetCmaBlock07 pvAnotherName

// What an accessor returns is the address of its own count.
#define DEFINE_COUNTING_ACCESSOR(name)   \
  extern "C" VORLWCOM_API void* name();  \
  extern "C" VORLWCOM_API void* name() { \
    static int calls = 0;                \
    ++calls;                             \
    return &calls;                       \
  }

VORLWCOM_COMMON_BLOCK_ACCESSORS(DEFINE_COUNTING_ACCESSOR)
