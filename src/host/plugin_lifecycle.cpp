#include "host/plugin_lifecycle.h"

#include "cluster/cluster_api.h"
#include "host/guard.h"
#include "host/run_action.h"
#include "region/region_api.h"
#include "render/render_api.h"
#include "tree/tree_api.h"

namespace ZOLVA {
namespace {

void* hInstance = nullptr;
reaper_plugin_info_t* g_rec = nullptr;
int command_id = 0;
custom_action_register_t action = {0, "ZOLVA_OPEN_COMMAND", "ZOLVA: Run", nullptr};

void* HookPointer() { return reinterpret_cast<void*>(&OnAction); }

void Register() {
  if (plugin_register) {
    command_id = plugin_register("custom_action", &action);
    SetRunActionCommandId(command_id);
    plugin_register("hookcommand2", HookPointer());
  }
  ZOLVA_Render::Initialize();
  ZOLVA_Render::RegisterAPI();
  ZOLVA_Cluster::State::Initialize();
  ZOLVA_Cluster::RegisterAPI();
  ZOLVA_Tree::Initialize();
  ZOLVA_Tree::RegisterAPI();
  ZOLVA_Region::Initialize();
  ZOLVA_Region::RegisterAPI();
}

void Unregister() {
  ZOLVA_Region::UnregisterAPI();
  ZOLVA_Region::Shutdown();
  ZOLVA_Tree::UnregisterAPI();
  ZOLVA_Tree::Shutdown();
  ZOLVA_Cluster::UnregisterAPI();
  ZOLVA_Cluster::State::Shutdown();
  ZOLVA_Render::UnregisterAPI();
  ZOLVA_Render::Shutdown();
  if (plugin_register) {
    plugin_register("-custom_action", &action);
    plugin_register("-hookcommand2", HookPointer());
  }
}

}  // namespace

int PluginEntry(void* instance, reaper_plugin_info_t* rec) noexcept {
  hInstance = instance;
  if (!rec) {
    if (g_rec) GuardedVoid(Unregister);
    return 0;
  }
  GuardedVoid([rec] { ResolveHostApi(rec->GetFunc); });
  g_rec = rec;
  // Whatever a module's start-up throws, the library stays loaded: the
  // functions registered so far must keep their code.
  GuardedVoid(Register);
  return 1;
}

}  // namespace ZOLVA
