#include "host/reaper_api.h"

#define ZOLVA_DEFINE_HOST_POINTER(ret, name, params) ret(*name) params = nullptr;
ZOLVA_HOST_FUNCTIONS(ZOLVA_DEFINE_HOST_POINTER)
#undef ZOLVA_DEFINE_HOST_POINTER

namespace ZOLVA {

void ResolveHostApi(void* (*getFunc)(const char* name)) {
  if (!getFunc) getFunc = [](const char*) -> void* { return nullptr; };
#define ZOLVA_RESOLVE_HOST_POINTER(ret, name, params) \
  name = reinterpret_cast<ret(*) params>(getFunc(#name));
  ZOLVA_HOST_FUNCTIONS(ZOLVA_RESOLVE_HOST_POINTER)
#undef ZOLVA_RESOLVE_HOST_POINTER
}

}  // namespace ZOLVA
