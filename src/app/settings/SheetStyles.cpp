#include "app/settings/SheetStyles.h"

#include "sheet/SheetTheme.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <limits>
#include <utility>

namespace terravo {
namespace {

constexpr const char* kSection = "SheetStyles";
constexpr const char* kCountKey = "Count";
constexpr const char* kLastKey = "Last";
constexpr std::size_t kMostStyles = 100;

std::string ToText(double value) {
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value);
    return {text, end};
}

// Leaves a value alone that is no number or out of range.
template <class Number>
void Read(std::string_view text, Number low, Number high, Number& value) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && number >= low &&
        number <= high) {
        value = number;
    }
}

const char* NameOf(const std::optional<bool>& landscape) {
    return !landscape ? "auto" : *landscape ? "landscape" : "portrait";
}

const char* NameOf(SheetLabels labels) {
    return labels == SheetLabels::None ? "none" : labels == SheetLabels::All ? "all" : "index";
}

std::string LayerNames(const SheetPlan& plan) {
    std::string names;
    for (const SheetLayer layer : SwitchableLayers()) {
        if (plan.Shows(layer)) {
            names += (names.empty() ? "" : ",") + std::string(NameOf(layer));
        }
    }
    return names;
}

// A choice of one's own: what a text names, where it names one.
template <class Value>
void Choose(std::string_view text, const std::vector<std::pair<const char*, Value>>& choices,
            Value& value) {
    for (const auto& [name, choice] : choices) {
        if (text == name) {
            value = choice;
        }
    }
}

void ReadPaper(std::string_view text, SheetPlan& plan) {
    if (const std::optional<PaperSize> size = ParsePaperSize(text)) {
        plan.paper = *size;
    }
}

void ReadScale(std::string_view text, SheetPlan& plan) {
    constexpr double kLargest = 0.001;
    constexpr double kSmallest = 1e9;
    double scale = 0;
    Read(text, kLargest, kSmallest, scale);
    plan.scale = scale > 0 ? std::optional(scale) : std::nullopt;
}

void ReadLayers(std::string_view text, SheetPlan& plan) {
    if (const std::optional<SheetLayers> layers = ParseLayers(text)) {
        plan.layers = *layers;
    }
}

void ReadTheme(std::string_view text, SheetPlan& plan) {
    if (FindTheme(text) != nullptr) {
        plan.theme = text;
    }
}

// "0": lines as they are cut.
void ReadSmooth(std::string_view text, SheetPlan& plan) {
    constexpr double kBelow = 0.5;
    double fraction = SmoothingOptions().fraction;
    Read(text, 0.0, kBelow, fraction);
    if (fraction > 0) {
        SmoothingOptions smoothing = plan.smoothing.value_or(SmoothingOptions());
        smoothing.fraction = fraction;
        plan.smoothing = smoothing;
    } else {
        plan.smoothing.reset();
    }
}

// Of the smoothing, where there is any.
template <class Value>
Value Of(const SheetPlan& plan, Value SmoothingOptions::*member) {
    return plan.smoothing.value_or(SmoothingOptions()).*member;
}

struct StyleKey {
    const char* name;
    std::function<std::string(const SheetPlan&)> write;
    std::function<void(std::string_view, SheetPlan&)> read;
};

const std::vector<StyleKey>& StyleKeys() {
    using Plan = SheetPlan;
    using View = std::string_view;
    static const std::vector<StyleKey> kKeys{
        {"paper", [](const Plan& p) { return p.paper.name; }, ReadPaper},
        {"orientation", [](const Plan& p) { return std::string(NameOf(p.landscape)); },
         [](View text, Plan& p) {
             Choose<std::optional<bool>>(
                 text, {{"auto", std::nullopt}, {"landscape", true}, {"portrait", false}},
                 p.landscape);
         }},
        {"scale", [](const Plan& p) { return p.scale ? ToText(*p.scale) : std::string("fit"); },
         ReadScale},
        {"rotation", [](const Plan& p) { return ToText(p.rotation); },
         [](View text, Plan& p) { Read(text, -360.0, 360.0, p.rotation); }},
        {"layers", LayerNames, ReadLayers},
        {"theme", [](const Plan& p) { return p.theme; }, ReadTheme},
        {"index", [](const Plan& p) { return std::to_string(p.indexEvery); },
         [](View text, Plan& p) { Read(text, 0, 100000, p.indexEvery); }},
        {"smooth", [](const Plan& p) { return p.smoothing ? ToText(p.smoothing->fraction) : "0"; },
         ReadSmooth},
        {"smoothness", [](const Plan& p) { return ToText(Of(p, &SmoothingOptions::smoothness)); },
         [](View text, Plan& p) {
             if (p.smoothing) {
                 Read(text, 0.0, 1.0, p.smoothing->smoothness);
             }
         }},
        {"goal",
         [](const Plan& p) {
             const bool isPlain = Of(p, &SmoothingOptions::goal) == SmoothingGoal::Plain;
             return std::string(isPlain ? "plain" : "surface");
         },
         [](View text, Plan& p) {
             if (p.smoothing) {
                 Choose<SmoothingGoal>(
                     text, {{"plain", SmoothingGoal::Plain}, {"surface", SmoothingGoal::Surface}},
                     p.smoothing->goal);
             }
         }},
        {"limit", [](const Plan& p) { return ToText(Of(p, &SmoothingOptions::limit)); },
         [](View text, Plan& p) {
             if (p.smoothing) {
                 Read(text, 0.0, std::numeric_limits<double>::max(), p.smoothing->limit);
             }
         }},
        {"labels", [](const Plan& p) { return std::string(NameOf(p.labels)); },
         [](View text, Plan& p) {
             Choose<SheetLabels>(text,
                                 {{"none", SheetLabels::None},
                                  {"index", SheetLabels::IndexLines},
                                  {"all", SheetLabels::All}},
                                 p.labels);
         }},
        {"spacing", [](const Plan& p) { return ToText(p.labelSpacing); },
         [](View text, Plan& p) { Read(text, 5.0, 10000.0, p.labelSpacing); }},
        {"uphill", [](const Plan& p) { return std::string(p.labelsUphill ? "1" : "0"); },
         [](View text, Plan& p) {
             Choose<bool>(text, {{"0", false}, {"1", true}}, p.labelsUphill);
         }},
        {"height", [](const Plan& p) { return ToText(p.textHeight); },
         [](View text, Plan& p) { Read(text, 0.5, 20.0, p.textHeight); }},
        {"grid", [](const Plan& p) { return std::string(p.gridLines ? "lines" : "crosses"); },
         [](View text, Plan& p) {
             Choose<bool>(text, {{"crosses", false}, {"lines", true}}, p.gridLines);
         }}};
    return kKeys;
}

} // namespace

std::string StyleText(const SheetPlan& plan) {
    std::string text;
    for (const StyleKey& key : StyleKeys()) {
        text += (text.empty() ? "" : ";") + std::string(key.name) + "=" + key.write(plan);
    }
    return text;
}

SheetPlan PlanOfStyle(std::string_view text) {
    SheetPlan plan;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view entry = text.substr(0, end);
        const std::size_t equals = std::min(entry.find('='), entry.size());
        for (const StyleKey& key : StyleKeys()) {
            if (entry.substr(0, equals) == key.name && equals < entry.size()) {
                key.read(entry.substr(equals + 1), plan);
            }
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return plan;
}

SheetStyles::SheetStyles(SettingsStore& store) : store_(store) {
    std::size_t count = 0;
    Read(std::string_view(store.Get(kSection, kCountKey).value_or("")), std::size_t{0}, kMostStyles,
         count);
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string key = std::to_string(i);
        const std::string name = store.Get(kSection, key + "Name").value_or("");
        if (!name.empty()) {
            styles_.push_back({name, store.Get(kSection, key + "Style").value_or("")});
        }
    }
}

std::vector<std::string> SheetStyles::Names() const {
    std::vector<std::string> names;
    for (const Style& style : styles_) {
        names.push_back(style.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool SheetStyles::Apply(const std::string& name, SheetPlan& plan) const {
    const auto found = std::find_if(styles_.begin(), styles_.end(),
                                    [&](const Style& style) { return style.name == name; });
    if (found == styles_.end()) {
        return false;
    }
    SheetPlan styled = PlanOfStyle(found->text);
    styled.centre = plan.centre;
    styled.texts = plan.texts;
    plan = styled;
    return true;
}

void SheetStyles::Keep(const std::string& name, const SheetPlan& plan) {
    if (name.empty()) {
        return;
    }
    Remove(name);
    if (styles_.size() < kMostStyles) {
        styles_.push_back({name, StyleText(plan)});
    }
    Save();
}

void SheetStyles::Remove(const std::string& name) {
    std::erase_if(styles_, [&](const Style& style) { return style.name == name; });
    Save();
}

void SheetStyles::Save() {
    for (std::size_t i = 0; i < styles_.size(); ++i) {
        const std::string key = std::to_string(i + 1);
        store_.Set(kSection, key + "Name", styles_[i].name);
        store_.Set(kSection, key + "Style", styles_[i].text);
    }
    store_.Set(kSection, kCountKey, std::to_string(styles_.size()));
}

SheetPlan SheetStyles::Last() const {
    return PlanOfStyle(store_.Get(kSection, kLastKey).value_or(""));
}

void SheetStyles::KeepLast(const SheetPlan& plan) {
    store_.Set(kSection, kLastKey, StyleText(plan));
}

} // namespace terravo
