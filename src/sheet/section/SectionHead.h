// The paper of a sheet of sections with its title and what the scales are.
//
// Data: the plan. Method: the title shrinks to its line; the scales stand below it.
#pragma once

#include "sheet/section/SectionPlot.h"
#include "sheet/section/SectionScales.h"

namespace terravo {

/// @param style  of the plan; outlives the context, as the others do.
SectionContext SectionContextOf(const SectionPlan& plan, const SheetWords& words,
                                const SectionStyle& style);

/// A scene with nothing but paper.
SheetScene BlankSheet(const SectionContext& context, bool landscape);

/// The height of the head, millimetres.
double SectionHeadHeight(const SectionContext& context);

/// @param beside  at the right of the scales, such as the number of the sheet.
void AddSectionHead(const SectionContext& context, const SheetBox& inside, const std::string& title,
                    const SectionScales& scales, const std::string& beside, SheetScene& scene);

/// The title of the plan; else that of the section, with the names of its surveys.
std::string SectionTitle(const SectionContext& context, const SectionSource& source);

/// That parts of a section lie outside its frame; millimetres.
Statement SectionDoesNotFit(double width, double height, double roomAcross, double roomUpright);

std::string StationText(const SectionContext& context, double station);

} // namespace terravo
