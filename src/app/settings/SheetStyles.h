// The named styles of sheets that a user keeps.
//
// Data: a style is a SheetPlan without its place and its texts, as a text "paper=A3;theme=dark;..."
// in the settings. Method: what a text does not say, says twice or says badly is as in a plan that
// nobody has changed.
#pragma once

#include "sheet/SheetPlan.h"
#include "util/SettingsStore.h"

#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// The style of a plan as text, on one line.
std::string StyleText(const SheetPlan& plan);
/// The plan of such a text, without a place and texts.
SheetPlan PlanOfStyle(std::string_view text);

class SheetStyles {
public:
    /// @param store  outlives the object.
    explicit SheetStyles(SettingsStore& store);

    /// In alphabetical order.
    [[nodiscard]] std::vector<std::string> Names() const;

    /// Gives a plan a style, whose place and texts stay.
    /// @return whether there is one of that name.
    bool Apply(const std::string& name, SheetPlan& plan) const;

    /// Keeps the style of a plan; one of the same name is replaced. An empty name keeps nothing.
    void Keep(const std::string& name, const SheetPlan& plan);
    void Remove(const std::string& name);

    /// The style of the sheet that was on the screen last.
    [[nodiscard]] SheetPlan Last() const;
    void KeepLast(const SheetPlan& plan);

private:
    struct Style {
        std::string name;
        std::string text;
    };

    void Save();

    SettingsStore& store_;
    std::vector<Style> styles_;
};

} // namespace terravo
