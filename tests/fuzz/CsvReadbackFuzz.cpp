// Tables of any bytes, read back and compared with small content.
//
// Data: the input is the file. Method: the check of each table must end with a sentence or without
// a difference, and without one only for what its writer writes; whatever can be taken apart must
// come back from fields that are written anew.
#include "export/readback/CsvCheck.h"
#include "export/readback/CsvRecords.h"
#include "export/vector/CsvWriter.h"
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"

namespace terravo {
namespace {

using fuzz::Require;
using Fields = std::vector<std::string>;

std::vector<Fields> RecordsIn(const std::string& path) {
    std::vector<Fields> all;
    CsvRecords records(path);
    std::vector<std::string_view> fields;
    while (records.Next(fields)) {
        all.emplace_back(fields.begin(), fields.end());
    }
    return all;
}

std::string Quoted(const std::string& field) {
    std::string text = "\"";
    for (const char c : field) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + "\"";
}

void CheckRecords(const test::TemporaryFolder& folder, const std::string& path) {
    try {
        const std::vector<Fields> records = RecordsIn(path);
        std::string again;
        for (const Fields& fields : records) {
            for (const std::string& field : fields) {
                again += Quoted(field) + ",";
            }
            again.back() = '\n';
        }
        Require(RecordsIn(folder.Write("again.csv", again)) == records,
                "records written anew are the same");
    } catch (const CsvFault& fault) {
        Require(!fault.sentence.empty(), "a fault says what it is");
    }
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    static const VectorContent content = test::SmallContent();
    const std::string path = folder.Write("table.csv", fuzz::TextOf(data, size));
    CheckRecords(folder, path);
    for (const VectorCheck check : {CheckCsvPoints, CheckCsvContours, CheckCsvTriangles}) {
        const std::optional<std::string> difference = check(path, content, {});
        Require(!difference || !difference->empty(), "a difference is told");
        Require(difference || size > 0, "nothing is not what was written");
    }
    return 0;
}
