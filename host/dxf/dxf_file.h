/// \file
/// The entities and blocks of a DXF file, not yet turned into objects.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dxf_groups.h"
#include "host/drawing/drawing_error.h"

namespace host {

/// An entity as a run of groups: group 0 with its type, then its own. A POLYLINE carries its vertices too,
/// each led by its group 0.
struct DxfEntity {
    std::uint32_t firstGroup = 0;
    std::uint32_t groupCount = 0;
};

struct DxfBlock {
    double baseX = 0;
    double baseY = 0;
    std::vector<DxfEntity> entities;
};

/// A DXF file in memory. What it holds points into its bytes.
class DxfFile {
public:
    /// Reads a file into memory; a DrawingError when there is none, it is empty or larger than 256 MB.
    static std::string Load(const std::string& path);

    /// Takes the file apart. What is wrong goes to the log; a strict log throws it.
    DxfFile(std::string_view bytes, ErrorLog& log);

    const std::vector<DxfEntity>& Entities() const { return m_entities; }
    const DxfBlock* FindBlock(std::string_view name) const;
    std::span<const DxfGroup> GroupsOf(const DxfEntity& entity) const {
        return std::span(m_groups).subspan(entity.firstGroup, entity.groupCount);
    }

private:
    void Read(std::string_view bytes);
    void StartEntity(const DxfGroup& group);
    void AddGroup(const DxfGroup& group);

    enum class Section { kNone, kSkipped, kBlocks, kEntities };
    Section m_section = Section::kNone;
    DxfBlock* m_block = nullptr; // the open block
    DxfBlock m_newBlock;         // until its name is known
    bool m_inBlockHeader = false;
    DxfEntity* m_entity = nullptr; // the entity that takes groups
    bool m_inVertices = false;

    std::vector<DxfGroup> m_groups;
    std::vector<DxfEntity> m_entities;
    std::map<std::string, DxfBlock, std::less<>> m_blocks;
};

} // namespace host
