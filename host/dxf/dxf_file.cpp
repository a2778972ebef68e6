// A DXF file is a flat run of groups; what structure it has is told by groups with code 0. This reader goes
// through them once and keeps what the host can draw: the entities of the ENTITIES section, and the blocks of
// the BLOCKS section with theirs. An entity is not turned into fields but kept as the run of its groups,
// since what they mean depends on its type, and most files hold many that nobody asks for. The groups of all
// entities lie in one array; thousands of small ones would cost more than they hold.
//
// A group 0 ends the entity before it and begins the next. One thing is nested all the same: a POLYLINE's
// vertices are entities of their own behind it, and belong to its run.
//
// Damage keeps what was read before it. So the entity that was cut off is kept too, and fails later if it
// lacks something.

#include "dxf_file.h"

#include <fstream>

namespace host {
namespace {

constexpr std::streamoff kLargestFile = 256 << 20; // bytes, ten times a large drawing

// Groups of entities in a file; they take a third of a gigabyte.
constexpr std::size_t kMostFileGroups = 1 << 23;

} // namespace

std::string DxfFile::Load(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) throw DrawingError("cannot be opened");
    const std::streamoff size = in.tellg();
    if (size < 0) throw DrawingError("cannot be read");
    if (size == 0) throw DrawingError("the file is empty");
    if (size > kLargestFile) throw DrawingError("the file is larger than 256 MB");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    in.seekg(0);
    if (!in.read(bytes.data(), size)) throw DrawingError("cannot be read");
    return bytes;
}

DxfFile::DxfFile(std::string_view bytes, ErrorLog& log) {
    try {
        Read(bytes);
    } catch (const DrawingError& error) {
        log.Note(error);
    }
}

const DxfBlock* DxfFile::FindBlock(std::string_view name) const {
    const auto found = m_mapBlocks.find(name);
    return found == m_mapBlocks.end() ? nullptr : &found->second;
}

void DxfFile::Read(std::string_view bytes) {
    DxfGroups groups(bytes);
    bool sectionNameNext = false;
    for (DxfGroup group; groups.Next(group);) {
        if (group.code == 999) continue; // a comment
        if (group.code == 0) {
            if (group.text == "EOF") return;
            sectionNameNext = group.text == "SECTION";
            if (sectionNameNext || group.text == "ENDSEC") m_eSection = Section::kSkipped;
            StartEntity(group);
        } else if (sectionNameNext && group.code == 2) {
            sectionNameNext = false;
            if (group.text == "BLOCKS") m_eSection = Section::kBlocks;
            if (group.text == "ENTITIES") m_eSection = Section::kEntities;
        } else {
            AddGroup(group);
        }
    }
    if (m_eSection == Section::kNone)
        throw DrawingError(groups.Where() + ": the file holds no section, it is no DXF file");
    throw DrawingError(groups.Where() + ": the file ends before its EOF mark");
}

// A group 0: the entity or block before it has ended. What begins is an entity of the drawing, of a block, a
// block itself, or something between them that is not kept.
void DxfFile::StartEntity(const DxfGroup& group) {
    const bool continuesPolyline = m_pEntity && m_bInVertices && group.text == "VERTEX";
    m_bInVertices = m_bInVertices && continuesPolyline;
    if (continuesPolyline) return AddGroup(group);
    m_pEntity = nullptr;
    m_bInBlockHeader = m_eSection == Section::kBlocks && group.text == "BLOCK";
    if (m_bInBlockHeader || group.text == "ENDBLK" || group.text == "SECTION") m_pBlock = nullptr;
    if (m_bInBlockHeader) m_newBlock = {};
    if (m_eSection != Section::kEntities && !m_pBlock) return;
    std::vector<DxfEntity>& owner = m_pBlock ? m_pBlock->entities : m_vecEntities;
    owner.push_back({static_cast<std::uint32_t>(m_vecGroups.size()), 0});
    m_pEntity = &owner.back();
    AddGroup(group);
    m_bInVertices = group.text == "POLYLINE";
}

// A group behind the group 0 of an entity or a block; others are passed over.
void DxfFile::AddGroup(const DxfGroup& group) {
    if (m_pEntity) {
        if (m_vecGroups.size() == kMostFileGroups)
            throw DrawingError(group.Where() + ": the file holds too many groups");
        m_vecGroups.push_back(group);
        ++m_pEntity->groupCount;
    } else if (m_bInBlockHeader) {
        // the name comes before or after the base point, so that both find the block they belong to
        DxfBlock& block = m_pBlock ? *m_pBlock : m_newBlock;
        if (group.code == 10) block.baseX = group.AsNumber();
        if (group.code == 20) block.baseY = group.AsNumber();
        if (group.code == 2 && !m_pBlock) m_pBlock = &(m_mapBlocks[std::string(group.text)] = m_newBlock);
    }
}

} // namespace host
