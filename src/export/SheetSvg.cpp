#include "export/SheetSvg.h"

#include "sheet/SheetCurve.h"
#include "util/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr double kCapitalPart = 1409.0 / 2048; // of the size of the font

// Three decimals at most, without trailing zeros.
void AppendNumber(std::string& out, double value) {
    constexpr long kThousandth = 1000;
    const long whole = std::lround(value * kThousandth);
    const long size = std::labs(whole);
    std::array<char, 24> digits{};
    if (whole < 0) {
        out += '-';
    }
    const auto* end =
        std::to_chars(digits.data(), digits.data() + digits.size(), size / kThousandth).ptr;
    out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
    long rest = size % kThousandth;
    if (rest == 0) {
        return;
    }
    out += '.';
    for (long unit = kThousandth / 10; rest > 0; unit /= 10) {
        out += static_cast<char>('0' + rest / unit);
        rest %= unit;
    }
}

// Control characters, which no XML may hold, become blanks.
std::string Escaped(const std::string& text) {
    std::string safe;
    for (const char c : text) {
        switch (c) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        default:
            safe += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
        }
    }
    return safe;
}

void AppendColour(std::string& out, Colour colour) {
    constexpr const char* kDigits = "0123456789abcdef";
    out += '#';
    for (const int channel : {RedOf(colour), GreenOf(colour), BlueOf(colour)}) {
        out += kDigits[channel / 16];
        out += kDigits[channel % 16];
    }
}

class SvgWriter {
public:
    SvgWriter(OutputFile& file, const SheetScene& scene, const TextMeasure& measure)
        : file_(file), out_(file.Buffer()), scene_(scene), measure_(measure) {}

    void Write(const std::string& title) {
        out_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
        AppendNumber(out_, scene_.width);
        out_ += "mm\" height=\"";
        AppendNumber(out_, scene_.height);
        out_ += "mm\" viewBox=\"0 0 ";
        AppendNumber(out_, scene_.width);
        out_ += ' ';
        AppendNumber(out_, scene_.height);
        out_ += "\">\n<title>" + Escaped(title) + "</title>\n";
        for (std::size_t i = 0; i < kSheetLayers; ++i) {
            WriteLayer(static_cast<SheetLayer>(i));
        }
        out_ += "</svg>\n";
    }

private:
    void WriteLayer(SheetLayer layer) {
        bool isOpen = false;
        const auto forThose = [&](const auto& elements, auto write) {
            for (const auto& element : elements) {
                if (element.layer != layer) {
                    continue;
                }
                if (!isOpen) {
                    OpenGroup(layer);
                    isOpen = true;
                }
                write(element);
                file_.FlushWhenFull();
            }
        };
        forThose(scene_.areas, [this](const SheetArea& area) { WriteArea(area); });
        forThose(scene_.lines, [this](const SheetLine& line) { WriteLine(line); });
        forThose(scene_.marks, [this](const SheetMarks& marks) { WriteMarks(marks); });
        forThose(scene_.texts, [this](const SheetText& text) { WriteText(text); });
        if (isOpen) {
            out_ += "</g>\n";
        }
    }

    void OpenGroup(SheetLayer layer) {
        out_ += "<g id=\"";
        out_ += NameOf(layer);
        out_ += "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" "
                "font-family=\"Liberation Sans, Arial, Helvetica, sans-serif\">\n";
    }

    void AppendPlace(SheetPoint place) {
        AppendNumber(out_, place.x);
        out_ += ' ';
        AppendNumber(out_, place.y);
    }

    void AppendVertices(std::span<const SheetPoint> vertices) {
        char command = 'M';
        for (const SheetPoint& point : vertices) {
            out_ += command;
            AppendPlace(point);
            command = 'L';
        }
    }

    void AppendCurve(std::span<const SheetPoint> controls) {
        constexpr double kLastDigit = 0.0005; // what rounding to three decimals may change
        out_ += 'M';
        AppendPlace(controls.front());
        for (std::size_t i = 0; i + 3 < controls.size(); i += 3) {
            if (IsStraight(controls.subspan(i).first<4>(), kLastDigit)) {
                out_ += 'L';
            } else {
                out_ += 'C';
                AppendPlace(controls[i + 1]);
                out_ += ' ';
                AppendPlace(controls[i + 2]);
                out_ += ' ';
            }
            AppendPlace(controls[i + 3]);
        }
    }

    void AppendPieces(std::span<const SheetPiece> pieces) {
        out_ += " d=\"";
        for (const SheetPiece& piece : pieces) {
            if (piece.cubics > 0) {
                AppendCurve(scene_.ControlsOf(piece));
            } else {
                AppendVertices(scene_.VerticesOf(piece));
            }
            out_ += piece.closed ? "Z" : "";
            file_.FlushWhenFull();
        }
        out_ += '"';
    }

    void AppendStroke(Colour colour, double width) {
        out_ += " stroke=\"";
        AppendColour(out_, colour);
        out_ += "\" stroke-width=\"";
        AppendNumber(out_, width);
        out_ += '"';
    }

    void WriteArea(const SheetArea& area) {
        out_ += "<path fill=\"";
        AppendColour(out_, area.fill);
        out_ += "\" fill-rule=\"evenodd\"";
        AppendPieces(scene_.PiecesOf(area));
        out_ += "/>\n";
    }

    void WriteLine(const SheetLine& line) {
        const SheetInk& ink = scene_.inks[line.ink];
        out_ += "<path";
        if (line.IsContour()) {
            out_ += " data-level=\"" + NumberText::General(line.level) + '"';
        }
        AppendStroke(ink.colour, ink.width);
        if (!ink.dashes.empty()) {
            out_ += " stroke-linecap=\"butt\" stroke-dasharray=\"";
            for (const double dash : ink.dashes) {
                AppendNumber(out_, dash);
                out_ += ' ';
            }
            out_.back() = '"';
        }
        AppendPieces(scene_.PiecesOf(line));
        out_ += "/>\n";
    }

    // A dot is a line with round ends and hardly a length: one without is not shown by every
    // viewer.
    void WriteMarks(const SheetMarks& marks) {
        const SheetInk& ink = scene_.inks[marks.ink];
        const bool isDot = marks.shape == SheetMarkShape::Dot;
        const double half = marks.size / 2;
        out_ += "<path";
        AppendStroke(ink.colour, isDot ? marks.size : ink.width);
        out_ += " d=\"";
        for (const SheetPoint& place : marks.places) {
            out_ += 'M';
            if (isDot) {
                AppendPlace(place);
                out_ += "h.001";
            } else {
                AppendPlace({place.x - half, place.y});
                out_ += 'H';
                AppendNumber(out_, place.x + half);
                out_ += 'M';
                AppendPlace({place.x, place.y - half});
                out_ += 'V';
                AppendNumber(out_, place.y + half);
            }
            file_.FlushWhenFull();
        }
        out_ += "\"/>\n";
    }

    void WriteText(const SheetText& text) {
        const bool isCentred = text.anchor == TextAnchor::Centre;
        const double down = isCentred ? text.height / 2 : 0;
        const SheetPoint start{text.place.x + std::sin(text.angle) * down,
                               text.place.y + std::cos(text.angle) * down};
        out_ += "<text fill=\"";
        AppendColour(out_, text.colour);
        out_ += "\" font-size=\"";
        AppendNumber(out_, text.height / kCapitalPart);
        out_ += "\" textLength=\"";
        AppendNumber(out_, measure_.Width(text.text, text.height, text.bold));
        out_ += "\" lengthAdjust=\"spacingAndGlyphs\"";
        if (text.anchor != TextAnchor::Left) {
            out_ += text.anchor == TextAnchor::Right ? " text-anchor=\"end\""
                                                     : " text-anchor=\"middle\"";
        }
        out_ += text.bold ? " font-weight=\"bold\"" : "";
        out_ += " x=\"";
        AppendNumber(out_, start.x);
        out_ += "\" y=\"";
        AppendNumber(out_, start.y);
        out_ += '"';
        if (text.angle != 0) {
            out_ += " transform=\"rotate(";
            AppendNumber(out_, -text.angle * 180 / std::numbers::pi);
            out_ += ' ';
            AppendPlace(start);
            out_ += ")\"";
        }
        out_ += ">" + Escaped(text.text) + "</text>\n";
    }

    OutputFile& file_;
    std::string& out_;
    const SheetScene& scene_;
    const TextMeasure& measure_;
};

} // namespace

void WriteSheetSvg(const OutputTarget& target, const SheetScene& scene, const std::string& title,
                   const TextMeasure& measure) {
    OutputFile file(target);
    SvgWriter(file, scene, measure).Write(title);
    file.Commit();
}

} // namespace terravo
