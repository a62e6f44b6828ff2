#include "export/readback/JsonFeatures.h"

#include "export/readback/LineBlocks.h"

#include <simdjson.h>

#include <utility>

namespace terravo {
namespace {

namespace json = simdjson::ondemand;

constexpr std::string_view kEnd = "]}\n"; // a line of its own

// Thrown and caught in this file.
struct Fault {
    std::string sentence;
};

template <class Value>
void SetOnce(std::optional<Value>& member, Value value) {
    if (member) {
        throw Fault{"a member stands twice"};
    }
    member = std::move(value);
}

// The positions of one geometry, read into lists that keep their room.
class Positions {
public:
    void Clear() {
        places.clear();
        ringEnds.clear();
        polygonEnds.clear();
    }

    void Read(std::string_view type, json::value coordinates) {
        if (type == "Point") {
            ReadPlace(coordinates.get_array());
            EndRing();
            EndPolygon();
        } else if (type == "LineString") {
            ReadRing(coordinates.get_array());
            EndPolygon();
        } else if (type == "Polygon") {
            ReadPolygon(coordinates.get_array());
        } else if (type == "MultiPolygon") {
            for (json::array polygon : coordinates.get_array()) {
                ReadPolygon(polygon);
            }
        } else {
            throw Fault{"a geometry of another type"};
        }
    }

    std::vector<SpacePoint> places;
    std::vector<std::size_t> ringEnds;
    std::vector<std::size_t> polygonEnds;

private:
    void EndRing() { ringEnds.push_back(places.size()); }
    void EndPolygon() { polygonEnds.push_back(ringEnds.size()); }

    void ReadPolygon(json::array rings) {
        for (json::array ring : rings) {
            ReadRing(ring);
        }
        EndPolygon();
    }
    void ReadRing(json::array ring) {
        for (json::array place : ring) {
            ReadPlace(place);
        }
        EndRing();
    }
    void ReadPlace(json::array numbers) {
        double values[3] = {};
        std::size_t count = 0;
        for (double number : numbers) {
            if (count == 3) {
                throw Fault{"a position of more than three numbers"};
            }
            values[count++] = number;
        }
        if (count != 3) {
            throw Fault{"a position of fewer than three numbers"};
        }
        places.push_back({values[0], values[1], values[2]});
    }
};

class FileReader {
public:
    explicit FileReader(JsonFeatureSink& sink) : sink_(sink) {}

    void Read(LineBlocks& blocks) {
        std::string_view block = blocks.Next();
        const std::size_t head = block.find('\n') + 1;
        if (head == 0) {
            throw Fault{"no line"};
        }
        bool goesOn = ReadHeader(block.substr(0, head));
        block.remove_prefix(head);
        while (goesOn) {
            goesOn = ReadBlock(block);
            block = blocks.Next();
            if (goesOn && block.empty()) {
                CheckEnd();
                return;
            }
        }
    }

private:
    template <class Text>
    json::document Parse(const Text& begin, std::string_view text, std::string_view end) {
        text_.clear();
        text_.reserve(text.size() + begin.size() + end.size() + simdjson::SIMDJSON_PADDING);
        ((text_ += begin) += text) += end;
        return parser_.iterate(text_.data(), text_.size(), text_.capacity());
    }

    static void RequireEnd(json::document& document) {
        if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
            throw Fault{"text behind the end"};
        }
    }

    bool ReadHeader(std::string_view line) {
        JsonHeader header;
        std::optional<bool> hasType;
        std::optional<bool> hasFeatures;
        json::document document = Parse(std::string_view(), line, std::string_view("]}"));
        for (json::field member : document.get_object()) {
            const std::string_view key = member.unescaped_key();
            json::value value = member.value();
            if (key == "type") {
                SetOnce(hasType, value.get_string().value() == "FeatureCollection");
            } else if (key == "name") {
                header.name = value.get_string().value();
            } else if (key == "crs") {
                header.system = ReadSystem(value);
            } else if (key == "bbox") {
                for (double number : value.get_array()) {
                    header.box.push_back(number);
                }
            } else if (key == "features") {
                json::array features = value.get_array();
                SetOnce(hasFeatures, features.is_empty().value());
            } else {
                throw Fault{"an unknown member"};
            }
        }
        RequireEnd(document);
        if (!hasType.value_or(false) || !hasFeatures.value_or(false)) {
            throw Fault{"no collection of features"};
        }
        return sink_.Header(header);
    }

    static std::string ReadSystem(json::value value) {
        std::string name;
        for (json::field member : value.get_object()) {
            const std::string_view key = member.unescaped_key();
            if (key == "type") {
                if (member.value().get_string().value() != "name") {
                    throw Fault{"a coordinate system of another type"};
                }
                continue;
            }
            for (json::field inner : member.value().get_object()) {
                if (key != "properties" || inner.unescaped_key().value() != "name") {
                    throw Fault{"an unknown member of the coordinate system"};
                }
                name = inner.value().get_string().value();
            }
        }
        return name;
    }

    // Lines up to the end of one; of the last block with the end of the list.
    bool ReadBlock(std::string_view text) {
        if (ended_) {
            throw Fault{"text behind the end"};
        }
        if (text == kEnd || text.ends_with("\n]}\n")) {
            text.remove_suffix(kEnd.size());
            ended_ = true;
        }
        if (text.ends_with('\n')) {
            text.remove_suffix(1);
        }
        if (text.empty()) {
            return true;
        }
        if (begun_ && !goesOn_) {
            throw Fault{"no comma between features"};
        }
        begun_ = true;
        goesOn_ = text.ends_with(',');
        if (goesOn_) {
            text.remove_suffix(1);
        }
        return ReadFeatures(text);
    }

    void CheckEnd() const {
        if (!ended_ || goesOn_) {
            throw Fault{"no end"};
        }
    }

    bool ReadFeatures(std::string_view text) {
        json::document document = Parse(std::string_view("["), text, std::string_view("]"));
        bool isEmpty = true;
        for (json::object feature : document.get_array()) {
            isEmpty = false;
            if (!ReadFeature(feature)) {
                return false;
            }
        }
        RequireEnd(document);
        if (isEmpty) {
            throw Fault{"a comma without a feature"};
        }
        return true;
    }

    bool ReadFeature(json::object object) {
        JsonFeature feature;
        positions_.Clear();
        std::optional<bool> isFeature;
        std::optional<std::int64_t> id;
        std::optional<bool> hasProperties;
        std::optional<bool> hasGeometry;
        for (json::field member : object) {
            const std::string_view key = member.unescaped_key();
            json::value value = member.value();
            if (key == "type") {
                SetOnce(isFeature, value.get_string().value() == "Feature");
            } else if (key == "id") {
                SetOnce(id, value.get_int64().value());
            } else if (key == "properties") {
                SetOnce(hasProperties, true);
                ReadProperties(feature, value.get_object());
            } else if (key == "geometry") {
                SetOnce(hasGeometry, true);
                ReadGeometry(feature, value.get_object());
            } else {
                throw Fault{"an unknown member of a feature"};
            }
        }
        if (!isFeature.value_or(false) || !id || !hasProperties || !hasGeometry) {
            throw Fault{"a feature that lacks a member"};
        }
        feature.id = *id;
        return sink_.Feature(feature);
    }

    static void ReadProperties(JsonFeature& feature, json::object object) {
        std::optional<std::string_view> kind;
        for (json::field member : object) {
            const std::string_view key = member.unescaped_key();
            json::value value = member.value();
            if (key == "kind") {
                SetOnce(kind, value.get_string().value());
            } else if (key == "elevation") {
                SetOnce(feature.elevation, value.get_double().value());
            } else if (key == "min") {
                SetOnce(feature.low, value.get_double().value());
            } else if (key == "max") {
                SetOnce(feature.high, value.get_double().value());
            } else if (key == "index") {
                SetOnce(feature.index, value.get_bool().value());
            } else if (key == "closed") {
                SetOnce(feature.closed, value.get_bool().value());
            } else if (key == "name") {
                SetOnce(feature.name, value.get_string().value());
            } else if (key == "number") {
                SetOnce(feature.number, value.get_string().value());
            } else if (key == "code") {
                SetOnce(feature.code, value.get_string().value());
            } else {
                throw Fault{"an unknown property"};
            }
        }
        feature.kind = kind.value_or(std::string_view());
    }

    // The type comes first: it says how deep the positions lie.
    void ReadGeometry(JsonFeature& feature, json::object object) {
        std::optional<std::string_view> type;
        for (json::field member : object) {
            const std::string_view key = member.unescaped_key();
            if (key == "type") {
                SetOnce(type, member.value().get_string().value());
            } else if (key == "coordinates" && type && positions_.places.empty()) {
                positions_.Read(*type, member.value());
            } else {
                throw Fault{"an unknown member of a geometry"};
            }
        }
        if (positions_.places.empty()) {
            throw Fault{"a geometry without positions"};
        }
        feature.geometry = *type;
        feature.positions = positions_.places;
        feature.ringEnds = positions_.ringEnds;
        feature.polygonEnds = positions_.polygonEnds;
    }

    JsonFeatureSink& sink_;
    json::parser parser_;
    std::string text_;
    Positions positions_;
    bool begun_ = false;
    bool goesOn_ = false; // a comma stands behind the last feature
    bool ended_ = false;
};

} // namespace

std::optional<std::string> ReadJsonFeatures(const std::string& path, JsonFeatureSink& sink) {
    LineBlocks blocks(path);
    try {
        FileReader(sink).Read(blocks);
    } catch (const Fault& fault) {
        return "the file is no GeoJSON as it was written: " + fault.sentence;
    } catch (const simdjson::simdjson_error& error) {
        return std::string("the file is no GeoJSON as it was written: ") + error.what();
    }
    return std::nullopt;
}

} // namespace terravo
