// A text as a field of a comma-separated table.
//
// Data: any text. Method: it stands in quotation marks where some reader could take a part of it
// for a separator, a line end or the beginning of a comment.
#pragma once

#include <string>
#include <string_view>

namespace terravo {

void AppendCsvField(std::string& out, std::string_view text);

} // namespace terravo
