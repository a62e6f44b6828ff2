// The texts of the user interface in one language.
//
// Data: the lines of a language file, addressed by their place in it, counted from 0, and an
// English text for each place. Method: the places are the enumeration Text, in the order of the
// lines; where a file ends early, because it was made for an older program, the English texts go
// on.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace terravo {

/// The lines of a language file, counted from 0.
using TextTable = std::vector<std::string>;

/// The text of one line. A new one goes to the end, here, in the English list and in every language
/// file.
enum class Text : std::size_t {
    OpenFile,
    Save,
    Exit,
    RecentFiles,
    About,
    ViewTitle,
    Views,
    PointsWord,
    ViewXY,
    Rotation,
    Rotate,
    Pause,
    HowToDrag,
    PointsLabel,
    LevelsLabel,
    Lines,
    Areas,
    Triangles,
    Perimeter,
    CopyPicture,
    InColour,
    BlackAndWhite,
    RotationAngle,
    PlotTitle,
    TooFewLevels,
    NoTriangulation,
    NoTriangulationAdvice,
    UnusedPoints,
    FirstPointsNotDistinct,
    TrianglesWord,
    ScaleErrorSource,
    BadPointFile,
    DrawingStopped,
    ErrorTitle,
    ViewErrorTitle,
    LevelValues,
    ChooseFile,
    Working,
    ReadingStopped,
    SaveRefused,
    Stop,
    ExportMap,
    Print,
    ExportPicture,
    PictureNotWritten,
    WhitePaper,
    PaperSize,
    Help,
    Settings,
    SettingsTitle,
    Language,
    Colours,
    Dark,
    Light,
    AsInTheFile,
    NextStart,
    NotSaved,
    Cancel,
    HelpTitle,
    Find,
    Next,
    Back,
    Contents,
    NotFound,
    NoGuide,
    ArrowKeys,
    AboutPurpose,
    AboutLicence,
    SystemInformation,
    UnknownPictureKind,
    EnterConfirms,
    SurveyMenu,
    ExactTriangulation,
    ExactSigns,
    CoordinateOutOfReach,
    FileNotRead,
    FileMissing,
    FailureLine,
    FailureField,
    FailureNotANumber,
    FailureTooLarge,
    FailureEndsEarly,
    SavedAs,
    PictureCopied,
    PictureKind,
    KindPoints,
    KindTriangles,
    KindSurface,
    SurfaceNeedsGrid,
    InitialView,
    WindowMenu,
    Tile,
    Cascade,
    View3DEntry,
    NothingIn3D,
    FreeListWord,
    WithoutHeight,
    RecordsLeftOut,
    ReadFreeLists,
    SavePointsAs,
    PointsNotSaved,
    ImportTitle,
    ImportCheck,
    DoubtNoRecord,
    DoubtNoNumbers,
    DoubtNamedText,
    DoubtHeaderCount,
    DoubtNames,
    DoubtTooFew,
    DoubtMany,
    DoubtComma,
    ImportColumns,
    OwnColumns,
    RoleIgnored,
    RoleName,
    RoleEasting,
    RoleNorthing,
    RoleHeight,
    RoleCode,
    ImportSeparator,
    SeparatorComma,
    SeparatorSemicolon,
    SeparatorTab,
    SeparatorBlank,
    SeparatorBar,
    ImportDecimal,
    DecimalPoint,
    ImportHeaderLines,
    ImportEncoding,
    ImportVoids,
    ImportVoidsHint,
    ImportFreeList,
    ImportSkipBad,
    ImportRead,
    FirstLines,
    ImportColumn,
    LineHeading,
    LineHeader,
    LineComment,
    LineBlank,
    LineNoHeight,
    LineBad,
    PlanOfPoints,
    PointsRead,
    HeadRead,
    LeftOut,
    LeftOutNothing,
    CountHeader,
    CountComments,
    CountBlank,
    CountNoHeight,
    CountBad,
    BadCount,
    BadField,
    NeedsColumns,
    NeedsPoints,
    NeedsSkipping,
    End // one behind the last
};

inline constexpr std::size_t kTextCount = static_cast<std::size_t>(Text::End);

class TextCatalogue {
public:
    /// The English texts.
    TextCatalogue();

    /// The texts of a language file. A line that the file has stays as it is, empty ones too;
    /// English ones follow the last.
    explicit TextCatalogue(TextTable lines);

    [[nodiscard]] const std::string& operator[](Text text) const {
        return lines_[static_cast<std::size_t>(text)];
    }

private:
    TextTable lines_;
};

} // namespace terravo
