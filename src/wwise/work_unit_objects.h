// The music objects of the interactive-music Work Unit, each a document of
// its own (declaration line included) that the Work Unit then takes in as
// text.
#pragma once

#include <string>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Xml {

std::string GenerateMusicSegmentXml(const WwiseMusicSegment& segment);

// Children are referenced by GUID and never followed, so any child graph,
// cycles and unknown GUIDs included, gives one element per reference.
std::string GenerateMusicContainerXml(const WwiseMusicContainer& container);

}  // namespace ZOLVA_Wwise::Xml
