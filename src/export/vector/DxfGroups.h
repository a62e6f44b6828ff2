// The pairs of lines that a DXF file consists of: a group code and its value.
//
// Data: text that grows. Method: codes stand right-justified in three columns, as readers of fixed
// columns want them; real numbers have every digit and a period, handles are hexadecimal.
#pragma once

#include "contour/TriangleCut.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace terravo::DxfGroups {

void AppendCode(std::string& out, int code);
/// @param value  without line ends, in the code page of the file.
void AppendText(std::string& out, int code, std::string_view value);
void AppendInteger(std::string& out, int code, std::int64_t value);
/// Throws AppError for a number that is not finite.
void AppendReal(std::string& out, int code, double value);
/// Hexadecimal.
std::string HandleText(std::uint64_t handle);
/// x under the code, y and z under the codes 10 and 20 higher. Throws AppError.
void AppendPoint(std::string& out, int code, const SpacePoint& point);

} // namespace terravo::DxfGroups
