#include "util/TextCatalogue.h"

#include <iterator>
#include <utility>

namespace terravo {
namespace {

struct EnglishText {
    Text text;
    const char* english;
};

constexpr EnglishText kEnglish[] = {
    {Text::OpenFile, "&Open file..."},
    {Text::Save, "&Save"},
    {Text::Exit, "E&xit"},
    {Text::RecentFiles, "&Recent files:"},
    {Text::About, "&About Terravo..."},
    {Text::ViewTitle, "Axonometric 3D view"},
    {Text::Views, "Views:"},
    {Text::PointsWord, "points"},
    {Text::ViewXY, "&X - Y"},
    {Text::Rotation, "Rotation:"},
    {Text::Rotate, "&Rotate"},
    {Text::Pause, "&Pause"},
    {Text::HowToDrag, "The view can be changed by dragging the end of the Y axis with the left "
                      "mouse button held down."},
    {Text::PointsLabel, " points:"},
    {Text::LevelsLabel, " L&evels:"},
    {Text::Lines, "&Lines"},
    {Text::Areas, "&Areas"},
    {Text::Triangles, "&Triangles"},
    {Text::Perimeter, "&Perimeter"},
    {Text::CopyPicture, "&Copy picture"},
    {Text::InColour, "Co&lour"},
    {Text::BlackAndWhite, "&Black and white"},
    {Text::RotationAngle, "Rotation angle, degrees:"},
    {Text::PlotTitle, "Contour map"},
    {Text::TooFewLevels, "At least two levels are needed."},
    {Text::NoTriangulation, "The points cannot be triangulated."},
    {Text::NoTriangulationAdvice, "Check that the points do not all lie on one line."},
    {Text::UnusedPoints, "Points that took no part because they repeat an earlier one:"},
    {Text::FirstPointsNotDistinct, "No triangles: the first two points do not count as distinct "
                                   "(in x and in y they are equal, or one of them is zero)."},
    {Text::TrianglesWord, "triangles"},
    {Text::ScaleErrorSource, "scale of the axes"},
    {Text::BadPointFile, "The point file cannot be read. The program will close."},
    {Text::DrawingStopped, "The drawing was stopped and is not complete."},
    {Text::ErrorTitle, "Error in: "},
    {Text::ViewErrorTitle, "Error in: "},
    {Text::LevelValues, "Level &values"},
    {Text::ChooseFile, "Choose a file"},
    {Text::Working, "Working..."},
    {Text::ReadingStopped, "Reading was stopped: nothing was loaded."},
    {Text::SaveRefused, "The last drawing was stopped. Draw the map to its end, then save."},
    {Text::Stop, "&Stop"},
    {Text::ExportMap, "Export &map..."},
    {Text::Print, "&Print..."},
    {Text::ExportPicture, "Export picture..."},
    {Text::PictureNotWritten, "The picture cannot be written."},
    {Text::WhitePaper, "White paper"},
    {Text::PaperSize, "Paper size"},
    {Text::Help, "&Help"},
    {Text::Settings, "&Settings..."},
    {Text::SettingsTitle, "Settings"},
    {Text::Language, "&Language:"},
    {Text::Colours, "&Colours:"},
    {Text::Dark, "Dark"},
    {Text::Light, "Light"},
    {Text::AsInTheFile, "As in the file"},
    {Text::NextStart, "Language and colours take effect at the next start."},
    {Text::NotSaved, "The settings cannot be saved."},
    {Text::Cancel, "Cancel"},
    {Text::HelpTitle, "Terravo: user guide"},
    {Text::Find, "&Find:"},
    {Text::Next, "&Next"},
    {Text::Back, "&Back"},
    {Text::Contents, "Contents"},
    {Text::NotFound, "Not found."},
    {Text::NoGuide, "The guide cannot be found."},
    {Text::ArrowKeys, "The arrow keys move it too, while the picture has the keyboard focus."},
    {Text::AboutPurpose, "Routines for drawing contour lines from scattered points."},
    {Text::AboutLicence, "Copyright 2026 The Terravo developers. MIT licence: use, change and "
                         "share it freely, without warranty."},
    {Text::SystemInformation, "System information..."},
    {Text::UnknownPictureKind, "The name of a picture ends in .png, .svg or .pdf."},
    {Text::EnterConfirms, "Enter confirms the number."},
    {Text::SurveyMenu, "&Survey"},
    {Text::ExactTriangulation, "&Exact triangulation"},
    {Text::ExactSigns, "exact signs"},
    {Text::CoordinateOutOfReach, "A coordinate is too large or too close to zero to compute with."},
    {Text::FileNotRead, "The file cannot be read. Nothing has changed."},
    {Text::FileMissing, "The file no longer exists:"},
    {Text::FailureLine, "line"},
    {Text::FailureField, "field"},
    {Text::FailureNotANumber, "is not a number"},
    {Text::FailureTooLarge, "is too large a number"},
    {Text::FailureEndsEarly, "the file ends where a number is expected"},
    {Text::SavedAs, "Saved:"},
    {Text::PictureCopied, "The picture is on the clipboard."},
    {Text::PictureKind, "&Kind:"},
    {Text::KindPoints, "Points"},
    {Text::KindTriangles, "Triangles"},
    {Text::KindSurface, "Surface"},
    {Text::SurfaceNeedsGrid, "A surface needs points on a regular grid."},
    {Text::InitialView, "&Initial"},
    {Text::WindowMenu, "&Window"},
    {Text::Tile, "&Tile"},
    {Text::Cascade, "&Cascade"},
    {Text::View3DEntry, "3D &view"},
    {Text::NothingIn3D, "There is no map that could be shown in 3D: open a point file."},
    {Text::FreeListWord, "free list of numbers"},
    {Text::WithoutHeight, "without height"},
    {Text::RecordsLeftOut, "records left out"},
    {Text::ReadFreeLists, "Read point files as a &free list of numbers"},
    {Text::SavePointsAs, "Save po&ints as..."},
    {Text::PointsNotSaved, "The points cannot be saved."},
    {Text::ImportTitle, "How is %1 to be read?"},
    {Text::ImportCheck, "Check what the columns mean."},
    {Text::DoubtNoRecord, "The file holds no record."},
    {Text::DoubtNoNumbers, "No line holds numbers that could be a point."},
    {Text::DoubtNamedText, "A column that is named as a coordinate does not hold numbers alone."},
    {Text::DoubtHeaderCount, "The line of column names has %1 fields, the records have %2."},
    {Text::DoubtNames, "The names of the columns do not tell easting, northing and height apart."},
    {Text::DoubtTooFew, "Columns with numbers: %1. A point has three."},
    {Text::DoubtMany, "Columns with numbers: %1. Which are the coordinates?"},
    {Text::DoubtComma, "A comma may be the decimal sign or divide thousands."},
    {Text::ImportColumns, "&Columns:"},
    {Text::OwnColumns, "as chosen below"},
    {Text::RoleIgnored, "ignored"},
    {Text::RoleName, "point number"},
    {Text::RoleEasting, "easting (x)"},
    {Text::RoleNorthing, "northing (y)"},
    {Text::RoleHeight, "height (z)"},
    {Text::RoleCode, "code"},
    {Text::ImportSeparator, "&Separator:"},
    {Text::SeparatorComma, "comma"},
    {Text::SeparatorSemicolon, "semicolon"},
    {Text::SeparatorTab, "tab"},
    {Text::SeparatorBlank, "blanks"},
    {Text::SeparatorBar, "bar |"},
    {Text::ImportDecimal, "&Decimal sign:"},
    {Text::DecimalPoint, "point"},
    {Text::ImportHeaderLines, "&Header lines:"},
    {Text::ImportEncoding, "&Encoding:"},
    {Text::ImportVoids, "&Missing heights:"},
    {Text::ImportVoidsHint, "Texts that stand for a missing height, divided by blanks, beside the "
                            "usual ones (empty, -, nan, -9999...)"},
    {Text::ImportFreeList, "&Free list: every three numbers are a point"},
    {Text::ImportSkipBad, "&Leave out records that do not fit (%1)"},
    {Text::ImportRead, "&Read"},
    {Text::FirstLines, "First lines"},
    {Text::ImportColumn, "Column %1"},
    {Text::LineHeading, "Line"},
    {Text::LineHeader, "header"},
    {Text::LineComment, "comment"},
    {Text::LineBlank, "blank"},
    {Text::LineNoHeight, "no height"},
    {Text::LineBad, "does not fit"},
    {Text::PlanOfPoints, "Plan of the points"},
    {Text::PointsRead, "Points: %1"},
    {Text::HeadRead, "Points in the first %2 lines: %1"},
    {Text::LeftOut, "Left out:"},
    {Text::LeftOutNothing, "nothing"},
    {Text::CountHeader, "Header lines: %1"},
    {Text::CountComments, "Comments: %1"},
    {Text::CountBlank, "Blank lines: %1"},
    {Text::CountNoHeight, "Without height: %1 (lines %2)"},
    {Text::CountBad, "Records that do not fit: %1"},
    {Text::BadCount, "Line %1: fields %2 instead of %3"},
    {Text::BadField, "Line %1, field %2: \"%3\" is not a number"},
    {Text::NeedsColumns, "No column is chosen for: %1."},
    {Text::NeedsPoints, "Read in this way no line gives a point."},
    {Text::NeedsSkipping, "Some records do not fit: leave them out, or read them in another way."},
    {Text::CheckEntry, "&Check the points..."},
    {Text::CheckTitle, "Survey check"},
    {Text::SeverityError, "error"},
    {Text::SeverityWarning, "warning"},
    {Text::SeverityNote, "note"},
    {Text::KindVoidHeight, "no height"},
    {Text::KindRepeat, "repeat"},
    {Text::KindRepeatOtherHeight, "repeat, other height"},
    {Text::KindNearRepeat, "nearly a repeat"},
    {Text::KindHeightOutlier, "height does not fit"},
    {Text::KindLonePoint, "far outside"},
    {Text::KindDegrees, "degrees"},
    {Text::KindConstantColumn, "constant column"},
    {Text::KindRunningNumber, "running number"},
    {Text::KindNoPart, "took no part"},
    {Text::SaysVoidHeight, "Records without a height, left out: %2."},
    {Text::SaysRepeat, "Points %1 have the same place and height; the first is used."},
    {Text::SaysRepeatOtherHeight,
     "Points %1 have the same place, but heights from %2 to %3; the first is used."},
    {Text::SaysNearRepeat, "Points %1 lie within %2 of each other."},
    {Text::SaysTooHigh, "Point %1 lies %2 above what the points around suggest."},
    {Text::SaysTooLow, "Point %1 lies %2 below what the points around suggest."},
    {Text::SaysGroupTooHigh, "Points %1 lie %2 above what the points around suggest."},
    {Text::SaysGroupTooLow, "Points %1 lie %2 below what the points around suggest."},
    {Text::SaysLonePoint, "Point %1 lies far outside all the others."},
    {Text::SaysDegrees, "The coordinates look like longitude and latitude in degrees; distances, "
                        "slopes and areas need metres."},
    {Text::SaysConstant, "All points have the same %2."},
    {Text::SaysRunning, "%2 counts the points; it may be a column of point numbers."},
    {Text::SaysAllOnOneLine, "There are no triangles: all points lie on one line."},
    {Text::SaysNoTriangles, "There are no triangles (IERR = %2)."},
    {Text::SaysNoPart, "Point %1 took no part in the triangulation: plain arithmetic cannot tell "
                       "it from another point."},
    {Text::SaysMore, "More findings of this kind: %2, with %3 points."},
    {Text::ExcludeHeading, "Exclude"},
    {Text::SeverityHeading, "Severity"},
    {Text::KindHeading, "Kind"},
    {Text::PointHeading, "Point"},
    {Text::FindingHeading, "Finding"},
    {Text::CheckCounts, "Errors: %1, warnings: %2, notes: %3"},
    {Text::CheckNothing, "Nothing was found: no point looks wrong."},
    {Text::CheckNoPoints, "No points have been read yet."},
    {Text::CheckNotMade, "These points have not been checked."},
    {Text::CheckStale, "The points have changed since the check."},
    {Text::CheckAgain, "Check &again"},
    {Text::TakeAllBack, "&Take all back"},
    {Text::SaveRemaining, "Save the &rest as..."},
    {Text::SaveExcluded, "Save the e&xcluded as..."},
    {Text::ExcludedPoints, "Excluded points: %1"},
    {Text::ExcludeHint, "A ticked box leaves points out of map, triangles, 3D view and all files "
                        "that are written; the point file stays as it is."},
    {Text::ThreeMustRemain, "Three points must remain."},
    {Text::CloseUp, "Surroundings of the point"},
    {Text::SheetNoBoxes, "The paper is too small for legend and title block."},
    {Text::SheetDoesNotFit,
     "The survey takes %1 x %2 mm at this scale, the map has %3 x %4 mm: parts of it lie outside."},
    {Text::SheetScale, "Scale"},
    {Text::SheetInterval, "Contour interval"},
    {Text::SheetLevels, "Contour levels"},
    {Text::SheetDatum, "Height datum"},
    {Text::SheetDate, "Date"},
    {Text::SheetAuthor, "Author"},
    {Text::SheetPoints, "Points"},
    {Text::SheetFile, "File"},
    {Text::LegendTitle, "Legend"},
    {Text::LegendContour, "Contour"},
    {Text::LegendContourEvery, "Contour, every %1 m"},
    {Text::LegendIndex, "Index contour"},
    {Text::LegendIndexEvery, "Index contour, every %1 m"},
    {Text::LegendHull, "Edge of the survey"},
    {Text::LegendTriangles, "Triangles"},
    {Text::LegendPoint, "Survey point"},
    {Text::LegendSpotHeight, "Spot height"},
    {Text::LegendNumber, "Point number"},
    {Text::LegendCode, "Point code"},
    {Text::LegendGrid, "Grid, every %1 m"},
    {Text::LegendHeights, "Heights in metres"},
};

constexpr bool StandInTheirPlaces() {
    for (std::size_t i = 0; i < std::size(kEnglish); ++i) {
        if (static_cast<std::size_t>(kEnglish[i].text) != i) {
            return false;
        }
    }
    return std::size(kEnglish) == kTextCount;
}
static_assert(StandInTheirPlaces(), "one English text for each, in the order of the enumeration");

} // namespace

std::string WithValues(const std::string& form, const std::vector<std::string>& values) {
    std::string text;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const std::size_t next = form[i] == '%' && i + 1 < form.size() ? i + 1 : i;
        const auto place = static_cast<std::size_t>(form[next] - '1');
        if (next > i && form[next] >= '1' && place < values.size()) {
            text += values[place];
            ++i;
        } else {
            text += form[i];
        }
    }
    return text;
}

TextCatalogue::TextCatalogue() : TextCatalogue(TextTable{}) {}

TextCatalogue::TextCatalogue(TextTable lines) : lines_(std::move(lines)) {
    lines_.reserve(kTextCount);
    for (std::size_t i = lines_.size(); i < kTextCount; ++i) {
        lines_.emplace_back(kEnglish[i].english);
    }
}

} // namespace terravo
