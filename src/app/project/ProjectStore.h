// Project files and checksums on the disk.
//
// Data: paths. Method: a project is written whole or not at all; a checksum is made piece by piece,
// so that a file of any size takes no memory.
#pragma once

#include "app/project/ProjectServices.h"

namespace terravo {

class ProjectStore : public ProjectFiles {
public:
    [[nodiscard]] ProjectReading Read(const std::string& path) override;
    void Write(const std::string& path, const Project& project) override;
    [[nodiscard]] std::string ChecksumOf(const std::string& path, const StopToken& stop) override;
};

} // namespace terravo
