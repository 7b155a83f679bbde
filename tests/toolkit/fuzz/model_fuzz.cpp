// Reads any bytes as a model: nothing but a DataError may come of it, and what is a model is
// written and read again to the same bytes.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "toolkit/errors.h"
#include "toolkit/model/model_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  try {
    const std::string written = mcbin::modelToJson(mcbin::modelFromJson(text, "fuzz"));
    if (mcbin::modelToJson(mcbin::modelFromJson(written, "fuzz")) != written) std::abort();
  } catch (const mcbin::DataError&) {
    return 0;
  }
  return 0;
}
