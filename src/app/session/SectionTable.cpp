#include "app/session/SectionTable.h"

#include "export/vector/CsvField.h"
#include "export/vector/VectorNumber.h"

namespace terravo {
namespace {

const char* NameOf(ProfileMark mark) {
    switch (mark) {
    case ProfileMark::End:
        return "end";
    case ProfileMark::Edge:
        return "edge";
    case ProfileMark::Corner:
        break;
    }
    return "corner";
}

class Rows {
public:
    Rows(OutputFile& out, std::size_t section, const TableSection& source)
        : out_(out), section_(section), source_(source) {}

    void Append(const Profile& profile, int survey) {
        for (std::size_t run = 0; run < profile.runs.size(); ++run) {
            for (const ProfilePoint& point : profile.runs[run]) {
                AppendRow(point, LineNameAt(profile, point), survey, run + 1);
                out_.FlushWhenFull();
            }
        }
    }

private:
    void Real(double value) {
        VectorNumber::AppendShort(out_.Buffer(), value);
        out_.Buffer() += ',';
    }
    void Whole(std::size_t value) {
        VectorNumber::AppendWhole(out_.Buffer(), static_cast<std::int64_t>(value));
        out_.Buffer() += ',';
    }

    void AppendRow(const ProfilePoint& point, const std::string& line, int survey,
                   std::size_t run) {
        Real(point.station);
        Real(point.place.x);
        Real(point.place.y);
        Whole(section_);
        if (source_.isAcross) {
            Real(source_.figures->station);
        } else {
            out_.Buffer() += ',';
        }
        Whole(static_cast<std::size_t>(survey));
        Whole(run);
        out_.Buffer() += NameOf(point.mark);
        out_.Buffer() += point.line > 0 ? ",1," : ",0,";
        AppendCsvField(out_.Buffer(), line);
        out_.Buffer() += ',';
        VectorNumber::AppendShort(out_.Buffer(), point.z);
        out_.Buffer() += "\n";
    }

    OutputFile& out_;
    std::size_t section_;
    const TableSection& source_;
};

} // namespace

void WriteSectionTable(OutputFile& out, const std::vector<TableSection>& sections) {
    out.Append("station,x,y,section,axis_station,survey,run,mark,on_line,line,height\n");
    for (std::size_t i = 0; i < sections.size(); ++i) {
        Rows rows(out, i + 1, sections[i]);
        const SectionFigures& figures = *sections[i].figures;
        rows.Append(figures.first, 1);
        if (figures.second) {
            rows.Append(*figures.second, 2);
        }
    }
}

} // namespace terravo
