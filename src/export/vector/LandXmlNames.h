// Names in LandXML files: readers take them for keys, so each must be there once.
//
// Data: the texts of the content. Method: values, not text of the file, so that whoever reads the
// file back knows what to expect; a name that is taken gets a number behind it.
#pragma once

#include "export/vector/VectorContent.h"

#include <map>
#include <string>

namespace terravo {

/// The name of the surface: that of the survey, with an underscore for each ASCII character other
/// than letters, digits, blank, underscore and hyphen. "Surface" where nothing is left.
std::string SurfaceNameOf(const VectorContent& content);

/// The names of the points, all different; their numbers where names are not asked for.
class PointNames {
public:
    /// @param content  outlives the names.
    explicit PointNames(const VectorContent& content);

    /// @param point  1-based.
    [[nodiscard]] std::string Of(Index point) const;
    /// The names that are not those of the content, by point.
    [[nodiscard]] const std::map<Index, std::string>& Changed() const { return changed_; }

private:
    void MakeUnique();

    const VectorContent& content_;
    bool named_;
    std::map<Index, std::string> changed_;
};

} // namespace terravo
