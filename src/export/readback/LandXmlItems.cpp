#include "export/readback/LandXmlItems.h"

#include "export/readback/NumberFields.h"

#include <charconv>
#include <system_error>
#include <utility>

namespace terravo::LandXmlItems {
namespace {

constexpr std::pair<std::string_view, char> kEntities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}};

// A line that is taken apart from its front.
class Line {
public:
    explicit Line(std::string_view text) : rest_(text) {}

    bool Take(std::string_view fixed) {
        const bool holds = rest_.starts_with(fixed);
        rest_.remove_prefix(holds ? fixed.size() : 0);
        return holds;
    }

    // Three numbers with one blank between them.
    template <class Number>
    bool Take(std::array<Number, 3>& numbers) {
        return TakeNumber(numbers[0]) && Take(" ") && TakeNumber(numbers[1]) && Take(" ") &&
               TakeNumber(numbers[2]);
    }

    template <class Number>
    bool TakeNumber(Number& number) {
        const std::from_chars_result end =
            std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        rest_.remove_prefix(static_cast<std::size_t>(end.ptr - rest_.data()));
        return end.ec == std::errc();
    }

    // The value of an attribute, up to its quote.
    bool TakeValue(std::string& value) {
        value.clear();
        while (!rest_.empty() && rest_.front() != '"') {
            if (rest_.front() == '&' ? !TakeEntity(value) : !TakeCharacter(value)) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] bool IsEmpty() const { return rest_.empty(); }

private:
    bool TakeEntity(std::string& value) {
        for (const auto& [entity, character] : kEntities) {
            if (Take(entity)) {
                value += character;
                return true;
            }
        }
        return false;
    }

    bool TakeCharacter(std::string& value) {
        value += rest_.front();
        rest_.remove_prefix(1);
        return value.back() != '<';
    }

    std::string_view rest_;
};

bool TakePlace(Line& line, SpacePoint& place) {
    std::array<double, 3> numbers{};
    const bool holds = line.Take(numbers);
    place = {numbers[1], numbers[0], numbers[2]};
    return holds;
}

} // namespace

bool ReadLine(std::string_view text, Point& point) {
    Line line(text);
    point.code.clear();
    return line.Take("<CgPoint name=\"") && line.TakeValue(point.name) && line.Take("\"") &&
           (!line.Take(" desc=\"") || (line.TakeValue(point.code) && line.Take("\""))) &&
           line.Take(">") && TakePlace(line, point.place) && line.Take("</CgPoint>\n") &&
           line.IsEmpty();
}

bool ReadLine(std::string_view text, SurfacePoint& point) {
    Line line(text);
    return line.Take("<P id=\"") && line.TakeNumber(point.id) && line.Take("\">") &&
           TakePlace(line, point.place) && line.Take("</P>\n") && line.IsEmpty();
}

bool ReadLine(std::string_view text, Face& face) {
    Line line(text);
    return line.Take("<F n=\"") && line.Take(face.neighbours) && line.Take("\">") &&
           line.Take(face.corners) && line.Take("</F>\n") && line.IsEmpty();
}

bool ReadPlace(std::string_view text, SpacePoint& place) {
    std::array<double, 3> numbers{};
    const bool holds = NumberFields::Read(text, numbers);
    place = {numbers[1], numbers[0], numbers[2]};
    return holds;
}

} // namespace terravo::LandXmlItems
