#include "exchange/VectorFile.h"

#include "util/AppError.h"

#include <optional>

namespace terravo {
namespace {

void RequireSame(const std::string& written, const OutputTarget& target, const VectorFormat& format,
                 const VectorContent& content, const VectorOptions& options) {
    const std::optional<std::string> difference = format.check(written, content, options);
    if (difference) {
        throw AppError(ErrorNumber::kDeviceIo, target.path,
                       target.path + ": read back, the file is not what was written, and is not " +
                           "kept: " + *difference + ".");
    }
}

std::vector<std::string> RemarksFor(const VectorContent& content) {
    std::vector<std::string> remarks;
    for (const VectorRemark& remark : content.remarks) {
        if (!content.parts.And(remark.parts).IsEmpty()) {
            remarks.push_back(remark.sentence);
        }
    }
    return remarks;
}

} // namespace

VectorOutcome WriteVectorFile(const OutputTarget& target, const VectorFormat& format,
                              const VectorContent& content, const VectorOptions& options,
                              bool verify) {
    VectorOutcome outcome;
    outcome.remarks = RemarksFor(content);
    if (format.writeFolder != nullptr) {
        format.writeFolder(target, content, outcome.remarks);
        return outcome;
    }
    OutputFile file(target);
    format.write(file, content, options, outcome.remarks);
    file.Finish();
    const std::string written = file.FinishedPath();
    if (verify && format.check != nullptr && !written.empty()) {
        RequireSame(written, target, format, content, options);
        outcome.verified = true;
    }
    file.Commit();
    return outcome;
}

} // namespace terravo
