// Option texts come from scripts: any bytes must be looked up without harm,
// by the shared lookup and by the three option readers of the cluster module,
// which must agree with the lookup flag by flag.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "cluster/activation.h"
#include "cluster/association.h"
#include "cluster/render_prep.h"
#include "json/json_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string options(reinterpret_cast<const char*>(data), size);
  const char* text = options.c_str();
  for (const char* key : {"solo_items", "a", "", "\""}) {
    ZOLVA::Json::OptionEnabled(text, key, false);
    ZOLVA::Json::OptionEnabled(text, key, true);
  }
  using ZOLVA::Json::OptionEnabled;
  const auto association = ZOLVA_Cluster::Activation::ParseAssociationOptions(text);
  const auto activation = ZOLVA_Cluster::Activation::ParseActivationOptions(text);
  const auto render = ZOLVA_Cluster::Render::ParseRenderPrepOptions(text);
  if (association.time_bounded != OptionEnabled(text, "time_bounded", true) ||
      activation.selective_midi_off != OptionEnabled(text, "selective_midi_off", false) ||
      render.exclude_video != OptionEnabled(text, "exclude_video", true)) {
    std::abort();
  }
  return 0;
}
