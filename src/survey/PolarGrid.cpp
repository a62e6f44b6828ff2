#include "survey/PolarGrid.h"

#include "util/AppError.h"
#include "util/NumberText.h"
#include "util/OutputFile.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>
#include <string_view>
#include <vector>

namespace terravo {
namespace {

// Turns radians into degrees, although the sine and the cosine want radians: the angles of a table
// are only told apart by it, and listings made with it must stay comparable.
constexpr double kAngleFactor = 180.0 / std::numbers::pi;

// As many points as PointSet::count can number, with room for two triangles each.
constexpr std::size_t kMostPoints = std::numeric_limits<Index>::max() / 6 - 1;

using TableLine = std::vector<double>;

TableLine ReadTableLine(std::string_view line) {
    TableLine numbers;
    while (true) {
        const std::size_t tab = line.find('\t');
        numbers.push_back(NumberText::LeadingNumber(line.substr(0, tab)));
        if (tab == std::string_view::npos) {
            return numbers;
        }
        line.remove_prefix(tab + 1);
    }
}

std::vector<TableLine> ReadTable(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<TableLine> table;
    std::string line;
    while (std::getline(file, line)) {
        table.push_back(ReadTableLine(line));
    }
    if (table.empty()) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": no table can be read");
    }
    if ((table.size() - 1) > kMostPoints / table[0].size()) {
        throw AppError(ErrorNumber::kOverflow, path, path + ": the table holds too many points");
    }
    return table;
}

double Field(const TableLine& line, std::size_t j) {
    return j < line.size() ? line[j] : 0.0;
}

void FillPoints(const std::vector<TableLine>& table, PointSet& points) {
    const TableLine& radii = table[0];
    points.count = 0;
    points.extentX = points.extentY = points.extentZ = Extent{};
    if (table.size() > 1 && radii.size() > 1) {
        // Without a point the arrays stay, as after a point file without points.
        points.x.Clear();
        points.y.Clear();
        points.z.Clear();
    }
    for (std::size_t j = 1; j < radii.size(); ++j) {
        for (std::size_t r = 1; r < table.size(); ++r) {
            const double angle = table[r][0] * kAngleFactor;
            points.Append(radii[j] * std::cos(angle), radii[j] * std::sin(angle),
                          Field(table[r], j));
        }
    }
}

} // namespace

void ConvertPolarGrid(const std::string& workFolder, PointSet& points) {
    FillPoints(ReadTable(workFolder + "PolarData_02.txt"), points);
    OutputFile file(workFolder + "Quorin_Points.txt");
    for (Index i = 1; i <= points.count; ++i) {
        NumberText::AppendPrintedLine(file.Buffer(), points.x[i], points.y[i], points.z[i]);
        file.FlushWhenFull();
    }
    file.Commit();
}

} // namespace terravo
