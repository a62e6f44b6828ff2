#include "gis/module/RasterBands.h"

#include "survey/PointFile.h"
#include "util/AppError.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {
namespace {

std::string NameOfBand(int band) {
    return "band " + std::to_string(band);
}

bool IsColour(GDALRasterBand& band) {
    const GDALColorInterp meaning = band.GetColorInterpretation();
    return meaning != GCI_Undefined && meaning != GCI_GrayIndex;
}

// From columns and rows to the ground.
struct Placing {
    std::array<double, 6> terms{};
    bool isKnown = false;

    [[nodiscard]] double X(double column, double row) const {
        return terms[0] + column * terms[1] + row * terms[2];
    }
    [[nodiscard]] double Y(double column, double row) const {
        return terms[3] + column * terms[4] + row * terms[5];
    }
};

Placing PlacingOf(GDALDataset& data) {
    Placing placing;
    placing.isKnown = data.GetGeoTransform(placing.terms.data()) == CE_None;
    return placing;
}

// Heights of a row, and which of its cells hold any.
class RowReader {
public:
    RowReader(GDALRasterBand& band, int columns)
        : band_(band), columns_(columns), heights_(static_cast<std::size_t>(columns)),
          masks_(static_cast<std::size_t>(columns), 1),
          isMasked_((band.GetMaskFlags() & GMF_ALL_VALID) == 0), scale_(band.GetScale()),
          offset_(band.GetOffset()) {}

    bool Read(int row) {
        return Fetch(band_, row, heights_.data(), GDT_Float64) &&
               (!isMasked_ || Fetch(*band_.GetMaskBand(), row, masks_.data(), GDT_Byte));
    }
    [[nodiscard]] std::optional<double> Height(int column) const {
        const auto place = static_cast<std::size_t>(column);
        const double height = heights_[place] * scale_ + offset_;
        return masks_[place] != 0 && std::isfinite(height) ? std::optional(height) : std::nullopt;
    }

private:
    bool Fetch(GDALRasterBand& band, int row, void* cells, GDALDataType type) const {
        return band.RasterIO(GF_Read, 0, row, columns_, 1, cells, columns_, 1, type, 0, 0,
                             nullptr) == CE_None;
    }

    GDALRasterBand& band_;
    int columns_;
    std::vector<double> heights_;
    std::vector<unsigned char> masks_;
    bool isMasked_;
    double scale_;
    double offset_;
};

GDALRasterBand& BandOf(const SourceFile& file, const std::string& name) {
    for (int band = 1; band <= file.Data().GetRasterCount(); ++band) {
        if (name == NameOfBand(band)) {
            return *file.Data().GetRasterBand(band);
        }
    }
    throw AppError(ErrorNumber::kDeviceIo, file.Path(),
                   file.Path() + ": there is no " + name + ".");
}

} // namespace

std::vector<GisLayer> ListBands(const SourceFile& file) {
    GDALDataset& data = file.Data();
    const Placing placing = PlacingOf(data);
    GisLayer common;
    common.columns = data.GetRasterXSize();
    common.rows = data.GetRasterYSize();
    common.vertices = common.columns * common.rows;
    for (const std::int64_t column : {std::int64_t{0}, common.columns}) {
        for (const std::int64_t row : {std::int64_t{0}, common.rows}) {
            common.x.Include(placing.X(static_cast<double>(column), static_cast<double>(row)));
            common.y.Include(placing.Y(static_cast<double>(column), static_cast<double>(row)));
        }
    }
    common.system = SystemOfLayer(data.GetSpatialRef(), common.x, common.y);
    std::vector<GisLayer> layers;
    for (int band = 1; band <= data.GetRasterCount(); ++band) {
        layers.push_back(common);
        layers.back().name = NameOfBand(band);
        layers.back().hasHeights = placing.isKnown && !IsColour(*data.GetRasterBand(band));
    }
    return layers;
}

bool ReadBand(const SourceFile& file, const GdalScope& gdal, const std::string& name, Index step,
              const StopToken& stop, GisContent& content) {
    GDALDataset& data = file.Data();
    const Placing placing = PlacingOf(data);
    const int columns = data.GetRasterXSize();
    const int rows = data.GetRasterYSize();
    const int first = (step - 1) / 2;
    RowReader reader(BandOf(file, name), columns);
    for (std::int64_t row = std::min(first, rows - 1); row < rows; row += step) {
        if (!stop.GoesOn("read", static_cast<double>(row) / rows)) {
            return false;
        }
        if (!reader.Read(static_cast<int>(row))) {
            gdal.Throw(file.Path());
        }
        for (std::int64_t column = std::min(first, columns - 1); column < columns; column += step) {
            const std::optional<double> height = reader.Height(static_cast<int>(column));
            if (!height) {
                ++content.withoutHeight;
                continue;
            }
            if (content.points.count >= kMostPoints) {
                throw AppError(ErrorNumber::kDeviceIo, file.Path(),
                               file.Path() +
                                   ": the raster holds more points than can be triangulated.");
            }
            const double middleX = static_cast<double>(column) + 0.5;
            const double middleY = static_cast<double>(row) + 0.5;
            content.points.Append(placing.X(middleX, middleY), placing.Y(middleX, middleY),
                                  *height);
        }
    }
    return true;
}

} // namespace terravo
