#include "survey/import/ImportDraft.h"

#include "survey/import/Records.h"

#include <algorithm>
#include <array>
#include <utility>

namespace terravo {
namespace {

using enum ColumnRole;

constexpr std::array<ColumnRole, 3> kCoordinates{Easting, Northing, Height};

bool Has(const std::vector<ColumnRole>& roles, ColumnRole role) {
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

} // namespace

ImportDraft::ImportDraft(std::string path, const Inspection& inspection,
                         const std::optional<ImportPlan>& remembered)
    : path_(std::move(path)), candidates_(inspection.candidates) {
    plan_ = remembered.value_or(inspection.plan);
    // Whoever sees the columns may have numbers for names.
    plan_.othersAreText = false;
    head_ = ReadHeadText(path_, plan_.encoding);
    Refresh();
    if (remembered && preview_.points.count == 0) {
        *this = ImportDraft(path_, inspection, std::nullopt);
    }
}

void ImportDraft::Refresh() {
    preview_ = PreviewOf(head_, plan_);
    roles_ = Widened(plan_.columns);
}

std::vector<ColumnRole> ImportDraft::Widened(std::vector<ColumnRole> columns) const {
    columns.resize(std::max(columns.size(), preview_.columns), Ignored);
    return columns;
}

std::optional<std::size_t> ImportDraft::Candidate() const {
    for (std::size_t i = 0; i < candidates_.size(); ++i) {
        if (Widened(candidates_[i]) == roles_) {
            return i;
        }
    }
    return std::nullopt;
}

std::vector<ColumnRole> ImportDraft::MissingCoordinates() const {
    std::vector<ColumnRole> missing;
    for (const ColumnRole role : kCoordinates) {
        if (!plan_.freeList && !Has(roles_, role)) {
            missing.push_back(role);
        }
    }
    return missing;
}

// A code that is the last column takes the rest of the line, as descriptions do.
void ImportDraft::TakeColumns(const std::vector<ColumnRole>& roles) {
    std::vector<ColumnRole> columns = roles;
    while (!columns.empty() && columns.back() == Ignored) {
        columns.pop_back();
    }
    const std::size_t usual = preview_.usualFields;
    const bool isLast = columns.size() >= usual || plan_.separator == FieldSeparator::Blank;
    plan_.codeTakesRest = !columns.empty() && columns.back() == Code && isLast;
    plan_.fieldCount = plan_.codeTakesRest || columns.size() > usual ? 0 : usual;
    if (!plan_.codeTakesRest) {
        columns.resize(std::max(columns.size(), std::min(usual, roles.size())), Ignored);
    }
    plan_.columns = std::move(columns);
    Refresh();
}

void ImportDraft::ChooseCandidate(std::size_t candidate) {
    TakeColumns(Widened(candidates_.at(candidate)));
}

void ImportDraft::SetRole(std::size_t column, ColumnRole role) {
    std::vector<ColumnRole> roles = roles_;
    if (role != Ignored) {
        std::replace(roles.begin(), roles.end(), role, roles.at(column));
    }
    roles.at(column) = role;
    TakeColumns(roles);
}

void ImportDraft::InspectAgain() {
    ImportWish wish;
    wish.separator = plan_.separator;
    wish.decimal = plan_.decimal;
    wish.encoding = plan_.encoding;
    wish.skip = skip_;
    wish.voids = plan_.voids;
    const Inspection found = InspectPointFile(path_, wish);
    const std::vector<ColumnRole> before = roles_;
    const std::size_t usualBefore = preview_.usualFields;
    head_ = ReadHeadText(path_, plan_.encoding);
    candidates_ = found.candidates;
    if (!found.failure) {
        plan_ = found.plan;
        plan_.othersAreText = false;
    }
    Refresh();
    const bool wasComplete = std::all_of(kCoordinates.begin(), kCoordinates.end(),
                                         [&before](ColumnRole role) { return Has(before, role); });
    if (wasComplete && preview_.usualFields == usualBefore && before.size() >= preview_.columns) {
        TakeColumns(before);
    }
}

void ImportDraft::SetSeparator(FieldSeparator separator) {
    plan_.separator = separator;
    InspectAgain();
}

void ImportDraft::SetDecimal(char decimal) {
    plan_.decimal = decimal;
    InspectAgain();
}

void ImportDraft::SetEncoding(TextEncoding encoding) {
    plan_.encoding = encoding;
    InspectAgain();
}

void ImportDraft::SetHeaderLines(Index lines) {
    skip_ = plan_.headerLines = lines;
    Refresh();
}

void ImportDraft::SetVoids(const std::string& voids) {
    std::vector<std::string_view> texts;
    SplitRecord(voids, FieldSeparator::Blank, texts);
    plan_.voids.assign(texts.begin(), texts.end());
    Refresh();
}

void ImportDraft::SetFreeList(bool on) {
    plan_.freeList = on;
    if (!on && plan_.columns.empty()) {
        InspectAgain(); // what was remembered was a list
    } else {
        Refresh();
    }
}

} // namespace terravo
