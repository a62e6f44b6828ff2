#include "plot2d/PictureFile.h"

#include "util/AppError.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdint>
#include <exception>
#include <optional>
#include <vector>

namespace terravo {
namespace {

constexpr std::size_t kMostPaletteColours = 256;

// The colours of a picture in the order in which they first appear.
class Palette {
public:
    // Number of a colour, counted from 0; nothing when it would be one too many.
    std::optional<png_byte> NumberOf(QRgb colour) {
        // A quarter full at most, so a free slot always ends the search and soon.
        std::size_t slot = (colour * kSpread) >> kShift;
        while (slots_[slot] != 0 && words_[slots_[slot] - 1U] != colour) {
            slot = (slot + 1) % kSlots;
        }
        if (slots_[slot] == 0) {
            if (words_.size() == kMostPaletteColours) {
                return std::nullopt;
            }
            words_.push_back(colour);
            slots_[slot] = static_cast<std::uint16_t>(words_.size());
        }
        return static_cast<png_byte>(slots_[slot] - 1U);
    }

    [[nodiscard]] std::vector<png_color> Colours() const {
        std::vector<png_color> colours;
        colours.reserve(words_.size());
        for (const QRgb word : words_) {
            colours.push_back({static_cast<png_byte>(qRed(word)),
                               static_cast<png_byte>(qGreen(word)),
                               static_cast<png_byte>(qBlue(word))});
        }
        return colours;
    }

private:
    static constexpr std::uint32_t kSpread = 2654435769U; // 2^32 over the golden ratio
    static constexpr int kShift = 22;
    static constexpr std::size_t kSlots = std::size_t{1} << (32 - kShift);

    std::array<std::uint16_t, kSlots> slots_{}; // number + 1; 0 is free
    std::vector<QRgb> words_;
};

// What the encoder needs of a picture. An empty palette means full channels.
struct Rows {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int colourType = PNG_COLOR_TYPE_RGB;
    int strategy = Z_DEFAULT_STRATEGY;
    std::vector<png_color> palette;
    std::vector<png_byte> numbers;         // of a palette picture
    QImage channels;                       // of any other: keeps the rows alive
    std::vector<const png_byte*> pointers; // one a row
    png_uint_32 dotsPerMetreX = 0;
    png_uint_32 dotsPerMetreY = 0;
};

// Turns an RGB32 picture into colour numbers; false when it has too many colours.
bool FillNumbers(const QImage& picture, Rows& rows) {
    constexpr QRgb kOpaque = 0xFF000000U;
    Palette palette;
    rows.numbers.resize(static_cast<std::size_t>(picture.width()) *
                        static_cast<std::size_t>(picture.height()));
    png_byte* out = rows.numbers.data();
    QRgb last = 0; // no opaque word, so the first pixel is looked up
    png_byte number = 0;
    for (int y = 0; y < picture.height(); ++y) {
        rows.pointers.push_back(out);
        const auto* pixel = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (const QRgb* const end = pixel + picture.width(); pixel != end; ++pixel) {
            const QRgb word = *pixel | kOpaque;
            if (word != last) {
                const std::optional<png_byte> found = palette.NumberOf(word);
                if (!found) {
                    return false;
                }
                last = word;
                number = *found;
            }
            *out++ = number;
        }
    }
    rows.palette = palette.Colours();
    return true;
}

void FillChannels(const QImage& picture, Rows& rows) {
    const bool transparent = picture.hasAlphaChannel();
    rows.colourType = transparent ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
    rows.channels =
        picture.convertToFormat(transparent ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    rows.pointers.clear();
    for (int y = 0; y < rows.channels.height(); ++y) {
        rows.pointers.push_back(rows.channels.constScanLine(y));
    }
}

Rows MakeRows(const QImage& picture) {
    Rows rows;
    rows.width = static_cast<png_uint_32>(picture.width());
    rows.height = static_cast<png_uint_32>(picture.height());
    rows.dotsPerMetreX = static_cast<png_uint_32>(std::max(picture.dotsPerMeterX(), 0));
    rows.dotsPerMetreY = static_cast<png_uint_32>(std::max(picture.dotsPerMeterY(), 0));
    if (!picture.hasAlphaChannel() &&
        FillNumbers(picture.convertToFormat(QImage::Format_RGB32), rows)) {
        rows.colourType = PNG_COLOR_TYPE_PALETTE;
        rows.strategy = Z_RLE;
    } else {
        FillChannels(picture, rows);
    }
    return rows;
}

// Where the bytes go, and the library's reason when it gives up.
struct Sink {
    std::string bytes;
    std::string failure;
};

void KeepFailure(png_structp png, png_const_charp reason) {
    static_cast<Sink*>(png_get_error_ptr(png))->failure = reason;
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp /*png*/, png_const_charp /*reason*/) {}

void AppendBytes(png_structp png, png_bytep data, std::size_t count) {
    bool appended = true;
    try {
        static_cast<Sink*>(png_get_io_ptr(png))
            ->bytes.append(reinterpret_cast<const char*>(data), count);
    } catch (const std::exception&) {
        appended = false; // no exception may pass through the library
    }
    if (!appended) {
        png_error(png, "not enough memory");
    }
}

void FlushNothing(png_structp /*png*/) {}

// The library's two structures, freed together.
class Encoder {
public:
    explicit Encoder(Sink& sink)
        : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, &sink, KeepFailure, IgnoreWarning)),
          info_(png_ != nullptr ? png_create_info_struct(png_) : nullptr) {
        if (info_ != nullptr) {
            png_set_write_fn(png_, &sink, AppendBytes, FlushNothing);
        }
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder() { png_destroy_write_struct(&png_, &info_); }

    // False after a failure, which the sink then holds. The library leaves by a jump, so nothing
    // in here may need a destructor.
    bool Encode(const Rows& rows) {
        if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0) {
            return false;
        }
        constexpr int kFastest = 1;
        constexpr std::size_t kBlock = std::size_t{1} << 16;
        png_set_compression_level(png_, kFastest);
        png_set_compression_strategy(png_, rows.strategy);
        png_set_compression_buffer_size(png_, kBlock);
        png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        png_set_IHDR(png_, info_, rows.width, rows.height, 8, rows.colourType, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        if (!rows.palette.empty()) {
            png_set_PLTE(png_, info_, rows.palette.data(), static_cast<int>(rows.palette.size()));
        }
        png_set_pHYs(png_, info_, rows.dotsPerMetreX, rows.dotsPerMetreY, PNG_RESOLUTION_METER);
        png_write_info(png_, info_);
        for (const png_byte* row : rows.pointers) {
            png_write_row(png_, row);
        }
        png_write_end(png_, info_);
        return true;
    }

private:
    png_structp png_;
    png_infop info_;
};

} // namespace

std::string PngBytes(const QImage& picture) {
    Sink sink;
    const Rows rows = MakeRows(picture);
    Encoder encoder(sink);
    if (!encoder.Encode(rows)) {
        throw AppError(ErrorNumber::kDeviceIo, "PictureFile",
                       "the picture cannot be encoded: " +
                           (sink.failure.empty() ? "not enough memory" : sink.failure));
    }
    return std::move(sink.bytes);
}

void SavePicture(const QImage& picture, const OutputTarget& target) {
    std::string bytes;
    try {
        bytes = PngBytes(picture);
    } catch (const AppError& error) {
        throw AppError(error.number(), target.path, target.path + ": " + error.what());
    }
    OutputFile file(target);
    file.Append(bytes);
    file.Commit();
}

} // namespace terravo
