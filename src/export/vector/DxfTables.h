// The parts of a DXF file before and behind its entities: header, tables, blocks, objects.
//
// Data: what is the same in every file, as lists of groups, and what the plan tells: extents,
// units, layers, the view. Method: R2000 has all tables, owners and handles that a strict reader
// asks for; R12 has neither handles nor what came later.
#pragma once

#include "export/vector/DxfPlan.h"
#include "util/OutputFile.h"

#include <string_view>

namespace terravo {

/// Handle of the block that the entities belong to.
inline constexpr std::string_view kDxfModelSpace = "1F";
/// Name of the style of all texts.
std::string_view DxfTextStyle(const DxfPlan& plan);

/// All up to the first entity.
void WriteDxfHead(OutputFile& out, const DxfPlan& plan);

/// All behind the last entity, with the end of the file.
void WriteDxfTail(OutputFile& out, const DxfPlan& plan);

} // namespace terravo
