// Turning a schema into the Wwise interactive-music model, and the
// process-wide identifier generators it draws from.
#pragma once

#include <string>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Schema {

WwiseProjectData TransformToWwise(const V2Schema& schema, const ExportOptions& options);

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" from its own once-created generator.
std::string GenerateWwiseGUID();
// An unsigned 32-bit decimal from a second, independent generator.
std::string GenerateShortId();

// The container name of a group type text ("ActorMixer" for null or unknown).
const char* MapGroupTypeToContainer(const char* groupType);

}  // namespace ZOLVA_Wwise::Schema
