// What surrounds the entities of a DXF file: header, tables, blocks, objects.
//
// Data: the groups of the file, and what they must be for the content. Method: every record must
// have the groups of its kind, in their order; every handle must be new, every handle that is
// referred to must exist. What the entities need to know is kept.
#pragma once

#include "export/readback/DxfTags.h"
#include "export/vector/VectorFormat.h"

#include <limits>
#include <map>
#include <unordered_set>

namespace terravo {

/// The box of the places that entities have.
struct DxfExtents {
    static constexpr double kInfinite = std::numeric_limits<double>::infinity();
    SpacePoint low{kInfinite, kInfinite, kInfinite};
    SpacePoint high{-kInfinite, -kInfinite, -kInfinite};

    void Include(const SpacePoint& place);
};

struct DxfSeenLayer {
    std::string name;
    std::int64_t colour = 0;
};

class DxfFrame {
public:
    /// Both outlive the frame.
    DxfFrame(DxfTags& tags, const VectorContent& content, const VectorOptions& options);

    // Both throw DxfDifference.

    /// Reads up to the first entity.
    void ReadHead();
    /// Reads what follows the end of the entities, and the end of the file.
    /// @param extents  of the entities.
    /// @param highest  of their handles.
    void ReadTail(const DxfExtents& extents, std::uint64_t highest);

    [[nodiscard]] bool IsR12() const { return isR12_; }
    [[nodiscard]] const std::vector<DxfSeenLayer>& Layers() const { return layers_; }
    /// Of the block that entities belong to.
    [[nodiscard]] std::uint64_t ModelSpace() const { return modelSpace_; }
    /// Of what stands before the entities.
    [[nodiscard]] std::uint64_t HighestHandle() const { return highest_; }

private:
    // The groups of a record: codes and classes divided by blanks.
    struct Shape {
        std::string_view type;
        std::string_view codes;
        std::string_view classes;
    };
    struct Record {
        std::vector<int> codes;
        std::vector<std::string> values;

        [[nodiscard]] std::string_view Value(int code) const;
    };
    // A table, the shape of its entries, and the names of these in capitals; nothing: any.
    struct Table {
        std::string_view name;
        std::string_view extraCodes; // of the table itself
        std::string_view entryClass;
        std::string_view entryCodes;
        std::string_view names;
        std::string_view namesInR12;
    };

    static const Table kTables[];

    void ReadHeader();
    void ReadVariable(std::string_view name, std::string_view codes);
    void CheckVariables();
    void CheckVariable(const char* name, std::string_view value);
    void CheckExtents(const char* name, const SpacePoint& expected);
    void ReadTables();
    void ReadTable(const Table& table);
    void ReadBlocks();
    void ReadObjects();
    Record ReadRecord(const Shape& shape);
    void CheckGroup(int code, std::string_view value);
    void NoteHandle(std::string_view text);
    void NoteLayer(const Record& record);
    void CheckReferences();
    [[nodiscard]] std::string Without(std::string_view codes) const;

    DxfTags& tags_;
    const VectorContent& content_;
    bool isR12_;
    std::map<std::string, std::vector<std::string>, std::less<>> variables_;
    std::vector<DxfSeenLayer> layers_;
    std::unordered_set<std::string> layerNames_;
    std::unordered_set<std::uint64_t> handles_;
    std::unordered_set<std::uint64_t> references_;
    std::uint64_t modelSpace_ = 0;
    std::uint64_t highest_ = 0;
};

} // namespace terravo
