#include "export/vector/DxfWriter.h"

#include "export/vector/DxfEntities.h"
#include "export/vector/DxfTables.h"

namespace terravo {

void WriteDxf(OutputFile& out, const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks) {
    const DxfPlan plan(content, options, remarks);
    WriteDxfHead(out, plan);
    WriteDxfEntities(out, plan, remarks);
    WriteDxfTail(out, plan);
}

} // namespace terravo
