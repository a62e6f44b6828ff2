#include "survey/import/GridFile.h"

#include "survey/PointFile.h"
#include "survey/import/Records.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace terravo {
namespace {

struct GridShape {
    std::int64_t columns = 0;
    std::int64_t rows = 0;
    double x = 0; // of the first node
    double y = 0;
    double dx = 0;
    double dy = 0; // from a row to the next
    std::optional<double> voidValue;
};

class GridReader {
public:
    GridReader(TextSource& source, const ImportPlan& plan, PointSet& points, ImportReport& report,
               const StopToken& stop)
        : source_(source), plan_(plan), points_(points), report_(report), stop_(stop) {}

    std::optional<ReadFailure> Read(GridFormat format) {
        try {
            format == GridFormat::Esri ? ReadEsriShape() : ReadSurferShape();
            report_.headerLines = source_.LinesTaken() - (next_ < fields_.size() ? 1 : 0);
            CheckShape();
            ReadNodes();
        } catch (ReadFailure& failure) {
            return std::move(failure);
        }
        return std::nullopt;
    }

private:
    [[noreturn]] void Fail(std::string cause, bool isStop = false) const {
        ReadFailure failure;
        failure.file = source_.Path();
        failure.line = source_.LinesTaken();
        failure.cause = std::move(cause);
        failure.isStop = isStop;
        throw failure;
    }

    [[noreturn]] void FailAt(std::string_view field) const {
        ReadFailure failure;
        failure.file = source_.Path();
        failure.line = source_.LinesTaken();
        failure.content = "\"" + std::string(field.substr(0, 24)) + "\"";
        failure.cause = failure.content + " is not a number";
        failure.kind = ReadFailure::Kind::NotANumber;
        throw failure;
    }

    // The next field, over line ends; nothing at the end of the text.
    std::optional<std::string_view> Next() {
        while (next_ == fields_.size()) {
            std::string_view line;
            if (!source_.NextLine(line)) {
                return std::nullopt;
            }
            SplitRecord(line, FieldSeparator::Blank, fields_);
            next_ = 0;
        }
        return fields_[next_++];
    }

    double Number() {
        const std::optional<std::string_view> field = Next();
        if (!field) {
            Fail("the file ends where a number is expected");
        }
        const std::optional<double> value = NumberOf(*field, plan_.decimal);
        if (!value) {
            FailAt(*field);
        }
        return *value;
    }

    std::int64_t Count() {
        constexpr double kMost = 1e9;
        const double value = Number();
        if (!(value >= 1 && value <= kMost) || std::floor(value) < value) {
            Fail("a count of rows or columns is expected here");
        }
        return static_cast<std::int64_t>(value);
    }

    void ReadEsriShape() {
        double cell = 0;
        bool isCorner = false;
        for (;;) {
            const std::optional<std::string_view> field = Next();
            if (!field) {
                break;
            }
            std::string key(*field);
            std::transform(key.begin(), key.end(), key.begin(), [](char c) {
                return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            });
            if (NumberOf(key, plan_.decimal)) {
                --next_;
                break;
            }
            if (key == "ncols") {
                shape_.columns = Count();
            } else if (key == "nrows") {
                shape_.rows = Count();
            } else if (key == "xllcorner" || key == "xllcenter") {
                shape_.x = Number();
                isCorner = key == "xllcorner";
            } else if (key == "yllcorner" || key == "yllcenter") {
                shape_.y = Number();
            } else if (key == "cellsize") {
                cell = Number();
            } else if (key == "dx") {
                shape_.dx = Number();
            } else if (key == "dy") {
                shape_.dy = Number();
            } else if (key == "nodata_value") {
                shape_.voidValue = Number();
            } else if (key.find_first_of("0123456789") <= 1) {
                FailAt(key);
            } else {
                Fail("\"" + key.substr(0, 24) + "\" is no line of a grid's header");
            }
        }
        shape_.dx = cell > 0 ? cell : shape_.dx;
        shape_.dy = cell > 0 ? cell : shape_.dy;
        const double half = isCorner ? 0.5 : 0.0;
        // Rows are written from north to south.
        shape_.x += half * shape_.dx;
        shape_.y += (half + static_cast<double>(shape_.rows - 1)) * shape_.dy;
        shape_.dy = -shape_.dy;
    }

    void ReadSurferShape() {
        Next(); // DSAA
        shape_.columns = Count();
        shape_.rows = Count();
        const double west = Number();
        const double east = Number();
        const double south = Number();
        const double north = Number();
        Number(); // lowest
        Number(); // and highest height
        const auto step = [](double low, double high, std::int64_t nodes) {
            return nodes > 1 ? (high - low) / static_cast<double>(nodes - 1) : 0.0;
        };
        shape_.x = west;
        shape_.y = south;
        shape_.dx = step(west, east, shape_.columns);
        shape_.dy = step(south, north, shape_.rows);
    }

    void CheckShape() const {
        const bool fits = shape_.columns > 0 && shape_.rows > 0 &&
                          (std::fabs(shape_.dx) > 0 || shape_.columns == 1) &&
                          (std::fabs(shape_.dy) > 0 || shape_.rows == 1);
        if (!fits) {
            Fail("the header of the grid is not complete");
        }
        if (shape_.columns > kMostPoints / shape_.rows) {
            Fail("the grid holds more points than can be triangulated");
        }
    }

    [[nodiscard]] bool IsVoidNode(std::string_view field, double height) const {
        return (shape_.voidValue && std::fabs(height - *shape_.voidValue) <= 0) ||
               IsVoid(field, plan_.decimal, plan_.voids);
    }

    void ReadNodes() {
        for (std::int64_t row = 0; row < shape_.rows; ++row) {
            for (std::int64_t column = 0; column < shape_.columns; ++column) {
                ReadNode(row, column);
            }
            if (row == 0) {
                MakeRoomForAll(points_, source_.BytesTaken(), source_.FileSize());
            }
            if (!stop_.GoesOn("read",
                              static_cast<double>(row) / static_cast<double>(shape_.rows))) {
                Fail("reading was stopped", true);
            }
        }
        if (Next()) {
            Fail("there are more heights than the grid has nodes");
        }
    }

    void ReadNode(std::int64_t row, std::int64_t column) {
        const std::optional<std::string_view> field = Next();
        if (!field) {
            Fail("the file ends before the heights of all nodes");
        }
        ++report_.records;
        const std::optional<double> height = NumberOf(*field, plan_.decimal);
        if (IsVoidNode(*field, height.value_or(0))) {
            ++report_.voidHeights;
            return;
        }
        if (!height) {
            FailAt(*field);
        }
        points_.Append(shape_.x + static_cast<double>(column) * shape_.dx,
                       shape_.y + static_cast<double>(row) * shape_.dy, *height);
        points_.labels.NoteLine(points_.count, source_.LinesTaken());
    }

    TextSource& source_;
    const ImportPlan& plan_;
    PointSet& points_;
    ImportReport& report_;
    const StopToken& stop_;
    GridShape shape_;
    std::vector<std::string_view> fields_;
    std::size_t next_ = 0;
};

} // namespace

std::optional<ReadFailure> ReadGrid(TextSource& source, GridFormat format, const ImportPlan& plan,
                                    PointSet& points, ImportReport& report, const StopToken& stop) {
    return GridReader(source, plan, points, report, stop).Read(format);
}

} // namespace terravo
