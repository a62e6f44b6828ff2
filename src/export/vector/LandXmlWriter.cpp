#include "export/vector/LandXmlWriter.h"

#include "export/vector/CleanText.h"
#include "export/vector/FewRemarks.h"
#include "export/vector/LandXmlNames.h"
#include "export/vector/LandXmlSurface.h"
#include "export/vector/VectorLines.h"
#include "export/vector/XmlText.h"
#include "util/AppError.h"

#include <string_view>

namespace terravo {
namespace {

using XmlText::AppendAttribute;
using XmlText::AppendPlace;

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
    " xsi:schemaLocation=\"http://www.landxml.org/schema/LandXML-1.2"
    " http://www.landxml.org/schema/LandXML-1.2/LandXML-1.2.xsd\""
    " version=\"1.2\" date=\"2000-01-01\" time=\"00:00:00\" language=\"English\""
    " readOnly=\"false\">\n";

// Heights have a unit of their own, which is metres where none is said.
std::string_view UnitsOf(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Metre:
        break;
    case LengthUnit::Foot:
        return R"(<Imperial linearUnit="foot" areaUnit="squareFoot" volumeUnit="cubicFeet")"
               R"( temperatureUnit="fahrenheit" pressureUnit="inHG")"
               R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
               R"( elevationUnit="feet"/>)";
    case LengthUnit::UsSurveyFoot:
        return R"(<Imperial linearUnit="USSurveyFoot" areaUnit="squareFoot")"
               R"( volumeUnit="cubicFeet" temperatureUnit="fahrenheit" pressureUnit="inHG")"
               R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
               R"( elevationUnit="feet"/>)";
    }
    return R"(<Metric linearUnit="meter" areaUnit="squareMeter" volumeUnit="cubicMeter")"
           R"( temperatureUnit="celsius" pressureUnit="milliBars")"
           R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
           R"( elevationUnit="meter"/>)";
}

class Writer {
public:
    Writer(OutputFile& out, const VectorContent& content, std::vector<std::string>& remarks)
        : out_(out), content_(content), remarks_(remarks) {}

    void Write() {
        RefuseWhatDoesNotFit();
        WriteHead();
        if (HasPoints()) {
            WritePoints();
        }
        if (HasSurface() || HasLandXmlLines(content_)) {
            WriteSurface();
        }
        out_.Append("</LandXML>\n");
    }

private:
    [[noreturn]] static void Refuse(const std::string& sentence) {
        throw AppError(ErrorNumber::kInvalidCall, "LandXML", sentence);
    }
    [[nodiscard]] bool Wants(VectorPart part) const { return content_.parts.Has(part); }

    [[nodiscard]] bool HasPoints() const {
        return Wants(VectorPart::Points) && !content_.points.empty();
    }
    [[nodiscard]] bool HasSurface() const { return Wants(VectorPart::Triangles); }
    void RefuseWhatDoesNotFit() const {
        if (HasSurface() && content_.triangles.empty()) {
            Refuse("There are no triangles, and a LandXML surface needs one at least.");
        }
        if (!HasSurface() && !HasPoints() && !HasLandXmlLines(content_)) {
            Refuse("There is nothing that a LandXML file can hold.");
        }
        if (HasShortLine(content_)) {
            Refuse("A line has fewer than two vertices, which LandXML cannot hold.");
        }
    }

    void WriteHead() {
        std::string& text = out_.Buffer();
        text += kHead;
        (text += "<Units>").append(UnitsOf(content_.unit)) += "</Units>\n";
        if (content_.epsg) {
            const std::string code = std::to_string(*content_.epsg);
            text += "<CoordinateSystem";
            AppendAttribute(text, "epsgCode", code);
            AppendAttribute(text, "name", "EPSG:" + code);
            text += "/>\n";
        }
        text += "<Project";
        AppendAttribute(text, "name", CleanText(content_.name));
        text += "/>\n<Application name=\"Terravo\"/>\n";
    }

    void WritePoints() {
        const PointNames names(content_);
        TellChanged(names);
        out_.Append("<CgPoints>\n");
        for (Index i = 1; i <= static_cast<Index>(content_.PointCount()); ++i) {
            std::string& text = out_.Buffer();
            text += "<CgPoint";
            AppendAttribute(text, "name", names.Of(i));
            if (Wants(VectorPart::Codes) && !content_.CodeOf(i).empty()) {
                AppendAttribute(text, "desc", CleanText(content_.CodeOf(i)));
            }
            text += '>';
            AppendPlace(text, content_.PointAt(i));
            out_.Append("</CgPoint>\n");
        }
        out_.Append("</CgPoints>\n");
    }

    void TellChanged(const PointNames& names) {
        FewRemarks few(remarks_, "more points.");
        for (const auto& [point, name] : names.Changed()) {
            few.Add("Point " + std::to_string(point) + " is named " + Quoted(name) +
                    " in the LandXML file instead of " + Quoted(CleanText(content_.NameOf(point))) +
                    ".");
        }
        few.Finish();
    }

    void WriteSurface() {
        const std::string name = SurfaceNameOf(content_);
        const std::string given = CleanText(content_.name);
        if (name != given) {
            remarks_.push_back("The surface in the LandXML file is named " + Quoted(name) +
                               " instead of " + Quoted(given) + ".");
        }
        std::string& text = out_.Buffer();
        text += "<Surfaces>\n<Surface";
        AppendAttribute(text, "name", name);
        text += ">\n";
        if (HasLandXmlLines(content_)) {
            WriteLandXmlLines(out_, content_);
        }
        if (HasSurface()) {
            WriteLandXmlFaces(out_, content_);
        }
        out_.Append("</Surface>\n</Surfaces>\n");
    }

    OutputFile& out_;
    const VectorContent& content_;
    std::vector<std::string>& remarks_;
};

} // namespace

VectorParts LandXmlParts() {
    return {VectorPart::Contours, VectorPart::IndexContours, VectorPart::Triangles,
            VectorPart::Points,   VectorPart::Numbers,       VectorPart::Codes,
            VectorPart::Hull,     VectorPart::Boundary,      VectorPart::Breaklines};
}

VectorParts UsualLandXmlParts() {
    return {VectorPart::Triangles, VectorPart::Points,   VectorPart::Numbers,   VectorPart::Codes,
            VectorPart::Hull,      VectorPart::Boundary, VectorPart::Breaklines};
}

void WriteLandXml(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
                  std::vector<std::string>& remarks) {
    Writer(out, content, remarks).Write();
}

} // namespace terravo
