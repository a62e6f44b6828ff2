// A finished sheet of any window as a file that the user names.
//
// Data: the sheet. Method: the extension of the name says whether it is a PDF, an SVG or a PNG.
#pragma once

#include "app/session/Session.h"
#include "sheet/SheetScene.h"

#include <string>

/// Asks for the file and writes it; what fails is told.
/// @param proposedName  without an extension.
/// @param title         of the document.
void SheetToFile(const terravo::RunState& state, terravo::Session& session,
                 const std::string& proposedName, const terravo::SheetScene& scene,
                 const std::string& title);
