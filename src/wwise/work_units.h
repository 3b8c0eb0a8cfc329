// The three Work Unit documents as text: interactive music, events, sound banks.
#pragma once

#include <string>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Export {

std::string MusicWorkUnit(const WwiseProjectData& project);
std::string EventsWorkUnit(const WwiseProjectData& project);
std::string SoundBanksWorkUnit(const WwiseProjectData& project);

}  // namespace ZOLVA_Wwise::Export
