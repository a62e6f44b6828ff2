// Vector content as tables of features: what a GeoPackage and a folder of Shapefiles have alike.
//
// Data: for each kind of content a table with a geometry and columns. Method: the tables are
// created by whoever knows the format; here their features are made and filled.
#pragma once

#include "export/vector/VectorContent.h"
#include "gis/module/AttributeTexts.h"

#include <ogrsf_frmts.h>

#include <string>
#include <vector>

namespace terravo {

struct TableColumn {
    const char* name;
    const char* shortName; // of 10 letters at most
    OGRFieldType type;
    bool isFlag = false; // 0 or 1
};

enum class TableKind : unsigned char {
    Contours,
    Bands,
    Triangles,
    Points,
    Hull,
    Boundary,
    Breaklines
};

struct ContentTable {
    TableKind kind;
    const char* name;
    OGRwkbGeometryType geometry;
    std::vector<TableColumn> columns;
};

/// The tables in question, in their order: those of the parts, without constraints that are empty.
std::vector<ContentTable> TablesOf(const VectorContent& content);

/// Makes all features of a table and puts them into its layer.
/// @param layer  has the table's columns in their order.
/// @return false at the first feature that GDAL refuses.
bool FillTable(const ContentTable& table, const VectorContent& content, AttributeTexts& texts,
               OGRLayer& layer);

/// Throws AppError when a coordinate is no finite number.
void RequireFiniteNumbers(const VectorContent& content, const std::string& path);

} // namespace terravo
