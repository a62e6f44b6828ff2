#include "survey/import/ColumnNames.h"

#include "survey/import/Records.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace terravo {
namespace {

using Words = std::string_view; // separated and enclosed by blanks

constexpr std::array<std::pair<ColumnRole, Words>, 5> kWords{{
    {ColumnRole::Easting,
     " e x xcoord xcoordinate xcoordinata coordx coordinatex coordinatax coordenadax coordonneex "
     "xkoordinate koordinatex east easting eastings est este ostwert ost rechtswert rechts rw "
     "abscisse ascissa longitude longitudine longitud laenge lange lon long lng eastingx utmx utme "
     "pointx "},
    {ColumnRole::Northing,
     " n y ycoord ycoordinate ycoordinata coordy coordinatey coordinatay coordenaday coordonneey "
     "ykoordinate koordinatey north northing northings nord norte nordwert hochwert hoch hw "
     "ordonnee ordinata latitude latitudine latitud breite lat northingy utmy utmn pointy "},
    {ColumnRole::Height,
     " z h zcoord zcoordinate zcoordinata coordz coordinatez coordinataz coordenadaz coordonneez "
     "zkoordinate koordinatez height heights elevation elevations elev elv alt altitude altitudine "
     "quota quote hohe hoehe hoehen hohen altura cota cotas hauteur rl reducedlevel orthoheight "
     "orthometricheight ellipsoidalheight ellheight msl nn nhn pointz "},
    {ColumnRole::Name,
     " p pt pts pto pnt point pointid pointno pointnumber pointname pointnr ptid ptno ptnr ptname "
     "pno pnr pid id no nr num number name punkt punktnr punktnummer punktname punto puntonr "
     "npunto "
     "nome nomepunto numero numeropunto nombre nom nompoint matricule station stationid fid label "
     "oid pkt pktnr "},
    {ColumnRole::Code,
     " c code codes kode codice codigo cod desc descr description descrizione descripcion "
     "designation bezeichnung beschreibung class classification classe klasse clase intensity "
     "intensita layer type typ tipo note notes remark remarks attribute feature fcode comment "},
}};

struct Folded {
    std::string_view bytes;
    char letter;
};

// Accented letters of the languages, in UTF-8; Latin-1 ones come as they stand.
constexpr std::array<Folded, 22> kAccents{{
    {"\xC3\xB6", 'o'}, {"\xC3\x96", 'o'}, {"\xC3\xA4", 'a'}, {"\xC3\x84", 'a'}, {"\xC3\xBC", 'u'},
    {"\xC3\xA9", 'e'}, {"\xC3\x89", 'e'}, {"\xC3\xA8", 'e'}, {"\xC3\xAA", 'e'}, {"\xC3\xA0", 'a'},
    {"\xC3\xB3", 'o'}, {"\xC3\xB2", 'o'}, {"\xC3\xAD", 'i'}, {"\xC3\xBA", 'u'}, {"\xC3\xB1", 'n'},
    {"\xF6", 'o'},     {"\xD6", 'o'},     {"\xE4", 'a'},     {"\xE9", 'e'},     {"\xE8", 'e'},
    {"\xF3", 'o'},     {"\xFC", 'u'},
}};

// The words of a field: letters and digits, lower case, without accents.
std::vector<std::string> WordsOf(std::string_view field) {
    std::vector<std::string> words(1);
    while (!field.empty()) {
        const auto* const accent =
            std::find_if(kAccents.begin(), kAccents.end(),
                         [field](const Folded& f) { return field.starts_with(f.bytes); });
        if (accent != kAccents.end()) {
            words.back() += accent->letter;
            field.remove_prefix(accent->bytes.size());
            continue;
        }
        const char c = field.front();
        field.remove_prefix(1);
        if (c >= 'A' && c <= 'Z') {
            words.back() += static_cast<char>(c - 'A' + 'a');
        } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            words.back() += c;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    if (words.back().empty()) {
        words.pop_back();
    }
    return words;
}

std::optional<ColumnRole> RoleOfWord(const std::string& word) {
    std::string enclosed = " ";
    enclosed += word;
    enclosed += ' ';
    for (const auto& [role, words] : kWords) {
        if (words.find(enclosed) != std::string_view::npos) {
            return role;
        }
    }
    return std::nullopt;
}

// What the words of a field agree on. Words count before letters: "X (Nord)" is a northing, "H_m" a
// height.
std::optional<ColumnRole> RoleOfField(std::string_view field) {
    const std::vector<std::string> words = WordsOf(field);
    for (const bool letters : {false, true}) {
        std::optional<ColumnRole> agreed;
        for (const std::string& word : words) {
            const std::optional<ColumnRole> role =
                (word.size() == 1) == letters ? RoleOfWord(word) : std::nullopt;
            if (role && agreed && *agreed != *role) {
                return std::nullopt;
            }
            agreed = role ? role : agreed;
        }
        if (agreed) {
            return agreed;
        }
    }
    return std::nullopt;
}

std::size_t PlaceOfWord(const std::vector<std::string_view>& fields, std::string_view wanted) {
    std::size_t place = 0;
    while (place < fields.size() &&
           WordsOf(fields[place]) != std::vector<std::string>{std::string(wanted)}) {
        ++place;
    }
    return place;
}

// The roles of fields, as long as enough of them are known.
std::optional<std::vector<ColumnRole>> NamesOf(const std::vector<std::string_view>& fields,
                                               bool isComment) {
    constexpr std::size_t kFewest = 3;
    constexpr std::size_t kMost = 64;
    const std::size_t mostUnknown = isComment ? 0 : fields.size() / 3;
    if (fields.size() < kFewest || fields.size() > kMost) {
        return std::nullopt;
    }
    std::size_t unknown = 0;
    for (const std::string_view field : fields) {
        unknown += RoleOfField(field) ? 0 : 1;
        if (unknown > mostUnknown || NumberOf(field, '.') || NumberOf(field, ',')) {
            return std::nullopt;
        }
    }
    std::vector<ColumnRole> columns = ReadHeader(fields).columns;
    const auto count = std::count_if(columns.begin(), columns.end(), IsCoordinate);
    const bool areOnce = std::all_of(columns.begin(), columns.end(), [&columns](ColumnRole role) {
        return !IsCoordinate(role) || std::count(columns.begin(), columns.end(), role) == 1;
    });
    return areOnce && count >= (isComment ? 3 : 2) ? std::optional(std::move(columns))
                                                   : std::nullopt;
}

} // namespace

NamedHeader ReadHeader(const std::vector<std::string_view>& fields) {
    NamedHeader header;
    std::array<int, 6> times{};
    const std::size_t x = PlaceOfWord(fields, "x");
    const std::size_t y = PlaceOfWord(fields, "y");
    const std::size_t n = PlaceOfWord(fields, "n");
    const bool hasXy = x < fields.size() && y < fields.size();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::optional<ColumnRole> role = RoleOfField(fields[i]);
        // Beside x and y, N is a number.
        if (hasXy && i == n) {
            role = ColumnRole::Name;
        }
        header.known += role ? 1 : 0;
        const ColumnRole taken = role.value_or(ColumnRole::Ignored);
        const bool again = times[static_cast<std::size_t>(taken)]++ > 0;
        header.columns.push_back(again && !IsCoordinate(taken) ? ColumnRole::Ignored : taken);
    }
    const auto once = [&times](ColumnRole role) {
        return times[static_cast<std::size_t>(role)] == 1;
    };
    header.complete = once(ColumnRole::Easting) && once(ColumnRole::Northing) &&
                      once(ColumnRole::Height) && !(hasXy && y < x);
    return header;
}

NamedHeader ReadHeader(const std::vector<std::string_view>& fields, std::string_view line) {
    NamedHeader best = ReadHeader(fields);
    std::vector<std::string_view> split;
    for (const FieldSeparator separator :
         {FieldSeparator::Tab, FieldSeparator::Semicolon, FieldSeparator::Bar,
          FieldSeparator::Comma, FieldSeparator::Blank}) {
        SplitRecord(line, separator, split);
        NamedHeader other = ReadHeader(split);
        if (other.known > best.known) {
            best = std::move(other);
        }
    }
    return best;
}

std::optional<std::vector<ColumnRole>> NamesIn(std::string_view line, FieldSeparator separator) {
    const bool isComment = IsCommentLine(line, separator);
    const std::size_t name = isComment ? line.find_first_not_of("#;!*%/ \t") : 0;
    std::vector<std::string_view> fields;
    for (const FieldSeparator tried :
         {separator, FieldSeparator::Blank, FieldSeparator::Tab, FieldSeparator::Semicolon,
          FieldSeparator::Comma, FieldSeparator::Bar}) {
        SplitRecord(line.substr(std::min(name, line.size())), tried, fields);
        if (auto columns = NamesOf(fields, isComment)) {
            return columns;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> LineColumn(const std::vector<std::string_view>& fields) {
    constexpr Words kLine =
        " line lines lineid lineno linenr linenumber linename polyline polylineid string stringid "
        "stringname breakline linea lineaid lineanome nomelinea idlinea numerolinea polilinea "
        "spezzata linie linien linienid liniennr liniennummer linienname polylinie bruchkante "
        "bruchlinie ligne ligneid nomligne idligne numeroligne polyligne nombrelinea lineanombre "
        "ring ringid anello anillo anneau ";
    constexpr Words kName = " name names nome nombre nom id ";
    for (const Words words : {kLine, kName}) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            std::string enclosed = " ";
            for (const std::string& word : WordsOf(fields[i])) {
                enclosed += word;
            }
            enclosed += ' ';
            if (enclosed.size() > 2 && words.find(enclosed) != Words::npos) {
                return i;
            }
        }
    }
    return std::nullopt;
}

bool HaveSameCoordinates(const std::vector<ColumnRole>& a, const std::vector<ColumnRole>& b) {
    const auto placeIn = [](const std::vector<ColumnRole>& columns, ColumnRole role) {
        return std::find(columns.begin(), columns.end(), role) - columns.begin();
    };
    return std::all_of(a.begin(), a.end(), [&](ColumnRole role) {
        return !IsCoordinate(role) || std::find(b.begin(), b.end(), role) == b.end() ||
               placeIn(a, role) == placeIn(b, role);
    });
}

} // namespace terravo
