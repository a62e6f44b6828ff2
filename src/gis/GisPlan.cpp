#include "gis/GisPlan.h"

#include "survey/PointFile.h"
#include "survey/import/ColumnNames.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

std::optional<ColumnRole> RoleOf(const GisField& field) {
    const NamedHeader header = ReadHeader({field.name});
    return header.known > 0 ? std::optional(header.columns.front()) : std::nullopt;
}

bool IsHeightField(const GisField& field) {
    return field.isNumber && RoleOf(field) == ColumnRole::Height;
}

// The only attribute that is named like a height.
std::string NamedHeightField(const GisLayer& layer) {
    const auto count = std::count_if(layer.fields.begin(), layer.fields.end(), IsHeightField);
    return count == 1 ? std::find_if(layer.fields.begin(), layer.fields.end(), IsHeightField)->name
                      : std::string();
}

std::string FirstFieldOf(const GisLayer& layer, ColumnRole role) {
    const auto found =
        std::find_if(layer.fields.begin(), layer.fields.end(),
                     [role](const GisField& field) { return RoleOf(field) == role; });
    return found != layer.fields.end() ? found->name : std::string();
}

const GisField* FieldOf(const GisLayer& layer, const std::string& name) {
    const auto found = std::find_if(layer.fields.begin(), layer.fields.end(),
                                    [&name](const GisField& field) { return field.name == name; });
    return found != layer.fields.end() ? &*found : nullptr;
}

std::optional<std::size_t> PlaceOf(const GisSource& source, const std::string& name) {
    for (std::size_t i = 0; i < source.layers.size(); ++i) {
        if (source.layers[i].name == name) {
            return i;
        }
    }
    return std::nullopt;
}

std::int64_t CellsAlong(std::int64_t cells, Index step) {
    const std::int64_t first = std::min<std::int64_t>((step - 1) / 2, cells - 1);
    return cells < 1 ? 0 : (cells - 1 - first) / step + 1;
}

std::int64_t CountOf(const GisLayer& layer, Index step) {
    return layer.columns > 0 ? CellsAlong(layer.columns, step) * CellsAlong(layer.rows, step)
                             : layer.vertices;
}

bool IsSameSystem(const GisSystem& a, const GisSystem& b) {
    return a.name == b.name && a.epsg == b.epsg;
}

GisVerdict JudgeHeights(const GisLayer& layer, const GisPlan& plan) {
    if (plan.heightField.empty()) {
        return HasHeights(layer) ? GisVerdict() : GisVerdict{GisFault::NoHeights, layer.name};
    }
    const GisField* field = FieldOf(layer, plan.heightField);
    if (field == nullptr) {
        return {GisFault::UnknownField, plan.heightField};
    }
    return field->isNumber ? GisVerdict() : GisVerdict{GisFault::TextField, field->name};
}

GisVerdict JudgeSystem(const GisLayer& layer, const GisPlan& plan) {
    if (plan.toEpsg && layer.system.name.empty()) {
        return {GisFault::NoSystem, layer.name};
    }
    const bool isDegrees = layer.system.isGeographic && !plan.toEpsg && !plan.degreesAsTheyAre;
    return isDegrees ? GisVerdict{GisFault::Degrees, layer.name} : GisVerdict();
}

GisVerdict JudgeRaster(const GisLayer& band, const GisPlan& plan) {
    if (!plan.heightField.empty()) {
        return {GisFault::FieldOfRaster, plan.heightField};
    }
    return band.hasHeights ? JudgeSystem(band, plan) : GisVerdict{GisFault::Picture, band.name};
}

GisVerdict JudgeVector(const GisLayer& layer, const GisPlan& plan) {
    const GisVerdict heights = JudgeHeights(layer, plan);
    return heights.fault != GisFault::None ? heights : JudgeSystem(layer, plan);
}

bool IsAnywhere(const GisLayer& layer) {
    return layer.vertices > 0;
}

GisVerdict JudgeNames(const GisSource& source, const GisPlan& plan) {
    for (const std::string& name : plan.layers) {
        if (!PlaceOf(source, name)) {
            return {GisFault::UnknownLayer, name};
        }
    }
    if (std::none_of(source.layers.begin(), source.layers.end(), IsAnywhere)) {
        return {GisFault::Empty, {}};
    }
    return {};
}

// Layers that may be meant by a plan that names none.
std::vector<std::size_t> Candidates(const GisSource& source, const GisPlan& plan) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < source.layers.size(); ++i) {
        const GisLayer& layer = source.layers[i];
        const bool isOne = plan.heightField.empty() || source.isRaster
                               ? HasHeights(layer)
                               : FieldOf(layer, plan.heightField) != nullptr;
        if (isOne && IsAnywhere(layer)) {
            places.push_back(i);
        }
    }
    return places;
}

// Why no layer is taken although none is named.
GisVerdict JudgeChoice(const GisSource& source, const GisPlan& plan) {
    if (!Candidates(source, plan).empty()) {
        return {GisFault::ChooseLayer, {}};
    }
    if (source.isRaster) {
        return {GisFault::Picture, {}};
    }
    return plan.heightField.empty() ? GisVerdict{GisFault::NoHeights, {}}
                                    : GisVerdict{GisFault::UnknownField, plan.heightField};
}

std::string Counted(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// "contours (12 lines)", for a list to choose from.
std::string DescriptionOf(const GisLayer& layer) {
    std::string text = layer.name;
    std::string counts;
    const auto add = [&counts](std::int64_t count, const char* one, const char* many) {
        if (count > 0) {
            counts += (counts.empty() ? "" : ", ") + Counted(count, one, many);
        }
    };
    add(layer.points, "point", "points");
    add(layer.lines, "line", "lines");
    add(layer.rings, "ring", "rings");
    if (!HasHeights(layer)) {
        counts += counts.empty() ? "no heights" : ", no heights";
    }
    return counts.empty() ? text : text + " (" + counts + ")";
}

std::string ListOfLayers(const GisSource& source) {
    constexpr std::size_t kMost = 20;
    std::string list;
    std::size_t told = 0;
    std::size_t all = 0;
    for (const GisLayer& layer : source.layers) {
        if (!IsAnywhere(layer)) {
            continue;
        }
        ++all;
        if (told < kMost) {
            list += (told++ == 0 ? "" : ", ") + DescriptionOf(layer);
        }
    }
    return all > told ? list + " and " + std::to_string(all - told) + " more" : list;
}

std::string ListOfNumberFields(const GisSource& source, const GisPlan& plan) {
    std::vector<std::string> names;
    for (const GisLayer& layer : source.layers) {
        const bool isChosen =
            plan.layers.empty() ||
            std::find(plan.layers.begin(), plan.layers.end(), layer.name) != plan.layers.end();
        for (const GisField& field : layer.fields) {
            if (isChosen && field.isNumber &&
                std::find(names.begin(), names.end(), field.name) == names.end()) {
                names.push_back(field.name);
            }
        }
    }
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

std::string SentenceOnHeights(const GisVerdict& verdict, const GisSource& source,
                              const GisPlan& plan) {
    const std::string fields = ListOfNumberFields(source, plan);
    std::string text;
    if (verdict.fault == GisFault::UnknownField) {
        text = "there is no attribute \"" + verdict.detail + "\"";
    } else if (verdict.fault == GisFault::TextField) {
        text = "the attribute \"" + verdict.detail + "\" holds other things than numbers";
    } else {
        text = verdict.detail.empty() ? "nothing in it has heights"
                                      : "the layer \"" + verdict.detail + "\" has no heights";
    }
    return fields.empty() ? text : text + "; --height-field takes them from one of " + fields;
}

std::string SentenceOnDegrees(const GisVerdict& verdict, const GisSource& source) {
    const GisLayer& layer = source.layers[*PlaceOf(source, verdict.detail)];
    return "the coordinates are longitude and latitude (" + layer.system.name +
           "); --to-crs EPSG:" + std::to_string(ZoneOf(layer)) +
           " projects them to the zone that they lie in, --to-crs none takes the degrees as they "
           "are";
}

// Lines beside points may be anything: contours of the same ground, for one.
bool IsProposed(const GisLayer& layer, bool arePointsThere) {
    return HasHeights(layer) && (layer.points > 0 || !arePointsThere);
}

} // namespace

bool HasHeights(const GisLayer& layer) {
    return IsAnywhere(layer) && (layer.hasHeights || !NamedHeightField(layer).empty());
}

std::string HeightFieldOf(const GisLayer& layer, const GisPlan& plan) {
    if (!plan.heightField.empty()) {
        return plan.heightField;
    }
    return layer.hasHeights ? std::string() : NamedHeightField(layer);
}

std::vector<std::size_t> LayersOf(const GisSource& source, const GisPlan& plan) {
    if (plan.layers.empty()) {
        std::vector<std::size_t> candidates = Candidates(source, plan);
        return candidates.size() == 1 ? candidates : std::vector<std::size_t>();
    }
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < source.layers.size(); ++i) {
        if (std::find(plan.layers.begin(), plan.layers.end(), source.layers[i].name) !=
            plan.layers.end()) {
            places.push_back(i);
        }
    }
    return places;
}

GisVerdict Judge(const GisSource& source, const GisPlan& plan) {
    if (GisVerdict names = JudgeNames(source, plan); names.fault != GisFault::None) {
        return names;
    }
    if (plan.rasterStep && !source.isRaster) {
        return {GisFault::StepOfVector, {}};
    }
    const std::vector<std::size_t> places = LayersOf(source, plan);
    if (places.empty()) {
        return JudgeChoice(source, plan);
    }
    for (const std::size_t place : places) {
        const GisLayer& layer = source.layers[place];
        GisVerdict verdict = source.isRaster ? JudgeRaster(layer, plan) : JudgeVector(layer, plan);
        if (verdict.fault != GisFault::None) {
            return verdict;
        }
        if (!plan.toEpsg && !IsSameSystem(layer.system, source.layers[places.front()].system)) {
            return {GisFault::ManySystems, layer.name};
        }
    }
    return CountOf(source, plan) > kMostPoints ? GisVerdict{GisFault::TooManyPoints, {}}
                                               : GisVerdict();
}

std::string SentenceOf(const GisVerdict& verdict, const GisSource& source, const GisPlan& plan) {
    switch (verdict.fault) {
    case GisFault::None:
        break;
    case GisFault::Empty:
        return "there are no points, lines or polygons in it";
    case GisFault::Picture:
        return "this is a picture, which holds no heights";
    case GisFault::ChooseLayer:
        return "more than one layer has heights; --layer takes one of " + ListOfLayers(source);
    case GisFault::UnknownLayer:
        return "there is no layer \"" + verdict.detail + "\"; --layer takes one of " +
               ListOfLayers(source);
    case GisFault::NoHeights:
    case GisFault::UnknownField:
    case GisFault::TextField:
        return SentenceOnHeights(verdict, source, plan);
    case GisFault::Degrees:
        return SentenceOnDegrees(verdict, source);
    case GisFault::NoSystem:
        return "the file does not tell the coordinate system of the layer \"" + verdict.detail +
               "\", so --to-crs cannot project it";
    case GisFault::ManySystems:
        return "the layers have several coordinate systems; --to-crs brings them to one";
    case GisFault::TooManyPoints:
        return source.isRaster ? "the raster holds more points than can be triangulated; "
                                 "--raster-step takes less of them"
                               : "the file holds more points than can be triangulated";
    case GisFault::StepOfVector:
        return "this is no raster, for which --raster-step means nothing";
    case GisFault::FieldOfRaster:
        return "this is a raster, for which --height-field means nothing";
    }
    return {};
}

GisPlan ProposedPlan(const GisSource& source) {
    constexpr std::int64_t kEnough = 1000000;
    GisPlan plan;
    const GisLayer* first = nullptr;
    const bool arePointsThere =
        std::any_of(source.layers.begin(), source.layers.end(),
                    [](const GisLayer& layer) { return HasHeights(layer) && layer.points > 0; });
    for (const GisLayer& layer : source.layers) {
        const bool isAlike = first == nullptr || IsSameSystem(first->system, layer.system);
        const bool isOnlyBand = !source.isRaster || first == nullptr;
        if (IsProposed(layer, arePointsThere) && isAlike && isOnlyBand) {
            first = first == nullptr ? &layer : first;
            plan.layers.push_back(layer.name);
        }
    }
    if (first != nullptr && first->system.isGeographic) {
        plan.toEpsg = ZoneOf(*first);
    }
    if (source.isRaster) {
        Index step = 1;
        plan.rasterStep = step;
        while (CountOf(source, plan) > kEnough && step < kMostRasterStep) {
            plan.rasterStep = ++step;
        }
    }
    return plan;
}

std::int64_t CountOf(const GisSource& source, const GisPlan& plan) {
    std::int64_t count = 0;
    for (const std::size_t place : LayersOf(source, plan)) {
        count += CountOf(source.layers[place], plan.rasterStep.value_or(1));
    }
    return count;
}

int ZoneOf(const GisLayer& layer) {
    constexpr int kNorth = 32600;
    constexpr int kSouth = 32700;
    constexpr double kWidth = 6;
    double longitude = std::fmod((layer.x.min + layer.x.max) / 2 + 180, 360);
    longitude += longitude < 0 ? 360 : 0;
    const int zone = std::min(static_cast<int>(longitude / kWidth) + 1, 60);
    return (layer.y.min + layer.y.max < 0 ? kSouth : kNorth) + zone;
}

std::string NameFieldOf(const GisLayer& layer) {
    return FirstFieldOf(layer, ColumnRole::Name);
}

GisWish WishOf(const GisSource& source, const GisPlan& plan) {
    GisWish wish;
    for (const std::size_t place : LayersOf(source, plan)) {
        const GisLayer& layer = source.layers[place];
        wish.layers.push_back({layer.name, HeightFieldOf(layer, plan), NameFieldOf(layer),
                               FirstFieldOf(layer, ColumnRole::Code)});
    }
    wish.toEpsg = plan.toEpsg;
    wish.rasterStep = plan.rasterStep.value_or(1);
    return wish;
}

std::string NameOf(const GisSource& source, const GisPlan& plan) {
    std::string name = source.format + ": ";
    std::string before;
    for (const GisLayerWish& layer : WishOf(source, plan).layers) {
        name += before + layer.name;
        name += layer.heightField.empty() ? "" : " (" + layer.heightField + ")";
        before = ", ";
    }
    if (plan.rasterStep.value_or(1) > 1) {
        name += " 1:" + std::to_string(*plan.rasterStep);
    }
    return plan.toEpsg ? name + ", EPSG:" + std::to_string(*plan.toEpsg) : name;
}

} // namespace terravo
