/// \file
/// The variables, table records, entities and blocks of a DXF file, not yet turned into objects.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dxf_groups.h"
#include "host/drawing/drawing_error.h"
#include "host/drawing/names.h"

namespace host {

/// An entity as a run of the file's groups: group 0 with its type, then its own. A POLYLINE carries its
/// vertices too, each led by its group 0.
struct DxfEntity {
    DxfGroups::Place begin;
    std::uint32_t size = 0; ///< bytes of the file
};

/// A block: entities that inserts show, with the base point that goes where the insert is.
struct DxfBlock {
    double baseX = 0;
    double baseY = 0;
    std::vector<DxfEntity> entities;
};

/// A DXF file in memory, taken apart into entities and blocks. What it holds points into its bytes, which
/// must outlive it.
class DxfFile {
public:
    /// Reads a file into memory. Throws a DrawingError when there is none, it is a folder, empty or larger
    /// than 256 MB.
    static std::string Load(const std::string& path);

    /// Takes the bytes of a file apart up to its EOF mark. What is wrong goes to the log, which throws it
    /// when it is strict; what was read before stays. Bytes that are no DXF file at all (a DWG, no section in
    /// them) or more than 256 MB throw a DrawingError whatever the log.
    DxfFile(std::string_view bytes, ErrorLog& log);

    /// The first group of a variable of the HEADER section ("$INSUNITS"); null when there is none.
    const DxfGroup* FindVariable(std::string_view name) const;

    /// The records of the TABLES section, such as LAYER and STYLE, in the order of the file.
    const std::vector<DxfEntity>& TableRecords() const { return m_vecRecords; }

    /// The entities of the drawing itself, in the order of the file.
    const std::vector<DxfEntity>& Entities() const { return m_vecEntities; }

    /// The block of a name in any case of letters, null when there is none. Of blocks with one name the last
    /// counts.
    const DxfBlock* FindBlock(std::string_view name) const;

    /// The groups of one of the file's entities, read again; at least its group 0.
    std::vector<DxfGroup> GroupsOf(const DxfEntity& entity) const;

    /// Number of bytes of the file.
    std::size_t Size() const { return m_nSize; }

private:
    void Read();
    void StartEntity(const DxfGroup& group, const DxfGroups::Place& begin);
    void AddGroup(const DxfGroup& group);

    std::vector<DxfEntity>* Owner(std::string_view type);

    enum class Section { kNone, kSkipped, kHeader, kTables, kBlocks, kEntities };
    static Section SectionOf(std::string_view name);
    Section m_eSection = Section::kNone;
    std::string_view m_variable;  // whose first group comes next
    DxfBlock* m_pBlock = nullptr; // the open block
    DxfBlock m_newBlock;          // until its name is known
    bool m_bInBlockHeader = false;
    DxfEntity* m_pEntity = nullptr; // the entity that takes groups
    int m_nEntityGroups = 0;        // how many it has taken
    bool m_bInVertices = false;

    DxfGroups m_groups;
    std::size_t m_nSize;
    std::size_t m_nEntities = 0; // with those of the blocks
    std::map<std::string_view, DxfGroup> m_mapVariables;
    std::vector<DxfEntity> m_vecRecords;
    std::vector<DxfEntity> m_vecEntities;
    std::map<std::string, DxfBlock, NameLess> m_mapBlocks;
};

} // namespace host
