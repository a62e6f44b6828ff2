// The reader that checks LandXML files, on files of any bytes.
#include "export/readback/LandXmlReadback.h"
#include "fuzz/ReadbackFuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const std::vector<fuzz::ContentChange> changes = [] {
        std::vector<fuzz::ContentChange> list = fuzz::ChangesOfContent();
        list.emplace_back([](VectorContent& c) { c.triangles[0].neighbours[2] = 1; });
        list.emplace_back([](VectorContent& c) { c.unit = LengthUnit::UsSurveyFoot; });
        return list;
    }();
    fuzz::CheckReadback(CheckLandXml, changes, data, size);
    return 0;
}
