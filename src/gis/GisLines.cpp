#include "gis/GisLines.h"

#include "gis/GisImport.h"
#include "gis/GisLibrary.h"
#include "survey/PointFile.h"
#include "util/AppError.h"
#include "util/PathText.h"

#include <algorithm>
#include <new>
#include <vector>

namespace terravo {
namespace {

bool HasLines(const GisLayer& layer) {
    return layer.lines + layer.rings > 0;
}

bool IsNamed(const GisLayer& layer, const GisPlan& plan) {
    return plan.layers.empty() ||
           std::find(plan.layers.begin(), plan.layers.end(), layer.name) != plan.layers.end();
}

// Layers to choose from, for the end of a sentence.
std::string NamesOfLayers(const GisSource& source) {
    std::string names;
    for (const GisLayer& layer : source.layers) {
        if (HasLines(layer)) {
            names += (names.empty() ? "" : ", ") + layer.name;
        }
    }
    return names;
}

// What is wrong with the source as a whole, without a full stop.
std::string FaultOf(const GisSource& source, const GisPlan& plan) {
    if (source.isRaster) {
        return "this is a raster, which holds no lines";
    }
    if (std::none_of(source.layers.begin(), source.layers.end(), HasLines)) {
        const bool hasPoints = std::any_of(source.layers.begin(), source.layers.end(),
                                           [](const GisLayer& layer) { return layer.points > 0; });
        return hasPoints ? "it holds points only, no lines and no polygons"
                         : "there are no lines and no polygons in it";
    }
    for (const std::string& name : plan.layers) {
        const auto layer = std::find_if(source.layers.begin(), source.layers.end(),
                                        [&](const GisLayer& l) { return l.name == name; });
        if (layer == source.layers.end() || !HasLines(*layer)) {
            return (layer == source.layers.end() ? "there is no layer \""
                                                 : "there are no lines in the layer \"") +
                   name + "\"; lines are in " + NamesOfLayers(source);
        }
    }
    return {};
}

// What is wrong with a layer that is to be read.
std::string FaultOf(const GisLayer& layer, const GisLayer& first, const GisPlan& plan) {
    const std::string named = "the layer \"" + layer.name + "\"";
    if (plan.toEpsg && layer.system.name.empty()) {
        return named + " does not tell its coordinate system and cannot be projected";
    }
    if (layer.system.isGeographic && !plan.toEpsg && !plan.degreesAsTheyAre) {
        return named + " is in longitude and latitude (" + layer.system.name +
               "); project it to the system of the points";
    }
    const bool isAlike =
        layer.system.name == first.system.name && layer.system.epsg == first.system.epsg;
    return isAlike || plan.toEpsg ? ""
                                  : "the layers have several coordinate systems; name those of one";
}

class SourceLines {
public:
    SourceLines(const std::string& path, LineClosing closing, const GisPlan& plan,
                const StopToken& stop)
        : path_(path), closing_(closing), plan_(plan), stop_(stop) {}

    LineReading Run() {
        const GisListing listing = ListGisFile(path_, stop_);
        if (listing.failure) {
            reading_.isStopped = listing.failure->isStop;
            reading_.failure = reading_.isStopped ? "" : listing.failure->Sentence();
        } else if (const std::string fault = TakeLayers(listing.source); !fault.empty()) {
            reading_.failure = FailureOf(path_, fault).Sentence();
        } else {
            Read();
        }
        return std::move(reading_);
    }

private:
    // Says what is to be read; what is wrong with it.
    std::string TakeLayers(const GisSource& source) {
        std::string fault = FaultOf(source, plan_);
        const GisLayer* first = nullptr;
        std::int64_t vertices = 0;
        for (const GisLayer& layer : source.layers) {
            if (!fault.empty() || !HasLines(layer) || !IsNamed(layer, plan_)) {
                continue;
            }
            first = first == nullptr ? &layer : first;
            fault = FaultOf(layer, *first, plan_);
            vertices += layer.vertices;
            AddWish(layer);
        }
        return fault.empty() && vertices > kMostPoints
                   ? "the lines have more vertices than can be triangulated"
                   : fault;
    }

    // A layer need not have the attribute that the plan names for the heights.
    void AddWish(const GisLayer& layer) {
        const bool hasField =
            std::any_of(layer.fields.begin(), layer.fields.end(), [this](const GisField& field) {
                return field.name == plan_.heightField && field.isNumber;
            });
        const std::string heights = hasField ? plan_.heightField : HeightFieldOf(layer, GisPlan());
        GisLayerWish wish;
        wish.name = layer.name;
        wish.heightField = heights;
        wish.nameField = NameFieldOf(layer);
        wish.isFlat = heights.empty() && !layer.hasHeights;
        wish_.layers.push_back(wish);
    }

    void Read() {
        wish_.toEpsg = plan_.toEpsg;
        wish_.linesAlone = true;
        try {
            GisContent content = LoadGis().read(AbsolutePath(path_), wish_, stop_);
            reading_.isStopped = content.isStopped;
            if (!content.isStopped) {
                TakeContent(std::move(content));
            }
        } catch (const AppError& error) {
            reading_.failure = error.what();
        }
    }

    void TakeContent(GisContent content) {
        LineCollector collector(path_, closing_, reading_);
        if (content.withoutHeight > 0) {
            collector.Remark(std::to_string(content.withoutHeight) +
                                 " vertices without a place are left out",
                             0);
        }
        for (std::vector<SpaceLine>* lines : {&content.lines, &content.rings}) {
            for (SpaceLine& line : *lines) {
                collector.Add(std::move(line), 0);
            }
        }
        collector.Finish();
        if (reading_.lines.empty()) {
            reading_.failure =
                FailureOf(path_, "there is no line in it with two places or more").Sentence();
        }
    }

    const std::string& path_;
    LineClosing closing_;
    const GisPlan& plan_;
    const StopToken& stop_;
    GisWish wish_;
    LineReading reading_;
};

} // namespace

LineReading ReadSurfaceLines(const std::string& path, LineClosing closing, const GisPlan& plan,
                             const StopToken& stop) {
    try {
        if (IsGisFile(path)) {
            return SourceLines(path, closing, plan, stop).Run();
        }
    } catch (const std::bad_alloc&) {
        LineReading reading;
        reading.failure = FailureOf(path, "there is not enough memory").Sentence();
        return reading;
    }
    if (plan.layers.empty()) {
        return ReadLineFile(path, closing, stop);
    }
    LineReading reading;
    reading.failure = FailureOf(path, "this is a text, which has no layers").Sentence();
    return reading;
}

} // namespace terravo
