#include "app/settings/ExportHabit.h"

#include "exchange/VectorFormats.h"

#include <array>
#include <charconv>

namespace terravo {
namespace {

constexpr const char* kSection = "Export";
constexpr const char* kFormat = "Format";
constexpr const char* kDxf = "Dxf";
constexpr const char* kUnit = "Unit";
constexpr const char* kCrs = "Epsg";
constexpr const char* kDecimals = "Decimals";
constexpr const char* kSmooth = "Smooth";
constexpr const char* kYes = "yes";
constexpr std::array kUnits{"metre", "foot", "us-foot"}; // by their numbers

std::string PartsKey(const std::string& format) {
    return "Content-" + format;
}

std::string NamesOf(const VectorParts& parts) {
    std::string names;
    for (const VectorPart part : AllVectorParts()) {
        if (parts.Has(part)) {
            names += (names.empty() ? "" : ",") + std::string(NameOf(part));
        }
    }
    return names;
}

std::optional<int> NumberIn(const std::optional<std::string>& text, int least, int most) {
    int value = 0;
    if (!text ||
        std::from_chars(text->data(), text->data() + text->size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    return value >= least && value <= most ? std::optional(value) : std::nullopt;
}

bool Mentions(const std::string& text, const char* word) {
    return text.find(word) != std::string::npos;
}

std::string TextOf(const std::optional<int>& number) {
    return number ? std::to_string(*number) : std::string();
}

} // namespace

ExportHabit LoadExportHabit(const SettingsStore& store, const std::string& format) {
    ExportHabit habit;
    habit.format = format.empty() ? store.Get(kSection, kFormat).value_or("") : format;
    const VectorFormat* known = VectorFormatOf(habit.format);
    if (known == nullptr) {
        known = &VectorFormats().front();
        habit.format = std::string(known->option);
    }
    const std::optional<VectorParts> parts =
        ParseVectorParts(store.Get(kSection, PartsKey(habit.format)).value_or(""));
    habit.wish.parts = parts ? parts->And(known->known) : known->usual;
    const std::string dxf = store.Get(kSection, kDxf).value_or("");
    habit.options.dxfVersion = Mentions(dxf, "r12") ? DxfVersion::R12 : DxfVersion::R2000;
    habit.options.contoursIn3D = Mentions(dxf, "3d");
    habit.options.layerPerLevel = Mentions(dxf, "layers");
    const std::string unit = store.Get(kSection, kUnit).value_or("");
    for (std::size_t i = 0; i < kUnits.size(); ++i) {
        if (unit == kUnits[i]) {
            habit.wish.unit = static_cast<LengthUnit>(i);
        }
    }
    habit.wish.epsg = NumberIn(store.Get(kSection, kCrs), 1, kLargestEpsg);
    habit.wish.decimals = NumberIn(store.Get(kSection, kDecimals), 0, kMostVectorDecimals);
    habit.smooth = store.Get(kSection, kSmooth) == kYes;
    return habit;
}

void KeepExportHabit(SettingsStore& store, const ExportHabit& habit) {
    store.Set(kSection, kFormat, habit.format);
    store.Set(kSection, PartsKey(habit.format), NamesOf(habit.wish.parts));
    const VectorOptions& options = habit.options;
    store.Set(kSection, kDxf,
              std::string(options.dxfVersion == DxfVersion::R12 ? "r12" : "r2000") +
                  (options.contoursIn3D ? " 3d" : "") + (options.layerPerLevel ? " layers" : ""));
    store.Set(kSection, kUnit, kUnits[static_cast<std::size_t>(habit.wish.unit)]);
    store.Set(kSection, kCrs, TextOf(habit.wish.epsg));
    store.Set(kSection, kDecimals, TextOf(habit.wish.decimals));
    store.Set(kSection, kSmooth, habit.smooth ? kYes : "no");
}

} // namespace terravo
