// A DXF file is a flat run of groups; what structure it has is told by groups with code 0. This reader goes
// through them once and keeps what the host can draw, the entities of the ENTITIES section and the blocks of
// the BLOCKS section with theirs, and what says how: variables and table records. An entity is not turned
// into fields but kept as the place of its groups in the file, since what they mean depends on its type. They
// are read again when somebody asks for them: to split a file into groups takes little time, while the groups
// of all entities would take five times as much memory as the file.
//
// A group 0 ends the entity before it and begins the next. One thing is nested all the same: a POLYLINE's
// vertices are entities of their own behind it, and belong to its run.
//
// Damage keeps what was read before it. So the entity that was cut off is kept too, and fails later if it
// lacks something.

#include "dxf_file.h"

#include <filesystem>
#include <fstream>

namespace host {
namespace {

constexpr int kComment = 999;                      // group code
constexpr std::streamoff kLargestFile = 256 << 20; // bytes, ten times a large drawing
constexpr const char* kTooLarge = "the file is larger than 256 MB";

// Entities of a file; their places take a tenth of a gigabyte. A file of the largest size that has more
// spends less than 32 bytes on each, too few for a line.
constexpr std::size_t kMostEntities = 1 << 23;
// Variables of a header, thirty times as many as programs write; they take a megabyte.
constexpr std::size_t kMostVariables = 10'000;
// Groups of one entity; they take a third of a gigabyte.
constexpr int kMostEntityGroups = 1 << 23;
// Groups of an ordinary entity, for which memory is taken at once.
constexpr std::size_t kFewGroups = 16;

// Whether bytes begin as the binary format of the same programs does: "AC1015" and the like in its own line
// is no group code.
bool IsDwg(std::string_view bytes) {
    constexpr std::size_t kMark = 6; // letters
    return bytes.size() > kMark && bytes.starts_with("AC1") && bytes[kMark] != '\r' && bytes[kMark] != '\n';
}

} // namespace

DxfFile::Section DxfFile::SectionOf(std::string_view name) {
    if (name == "HEADER") return Section::kHeader;
    if (name == "TABLES") return Section::kTables;
    if (name == "BLOCKS") return Section::kBlocks;
    return name == "ENTITIES" ? Section::kEntities : Section::kSkipped;
}

std::string DxfFile::Load(const std::string& path) {
    std::error_code none; // what cannot be asked is no folder, and fails below
    if (std::filesystem::is_directory(path, none)) throw DrawingError("is a folder, not a drawing");
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) throw DrawingError("cannot be opened");
    const std::streamoff size = in.tellg();
    if (size < 0) throw DrawingError("cannot be read");
    if (size == 0) throw DrawingError("the file is empty");
    if (size > kLargestFile) throw DrawingError(kTooLarge);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    in.seekg(0);
    if (!in.read(bytes.data(), size)) throw DrawingError("cannot be read");
    return bytes;
}

DxfFile::DxfFile(std::string_view bytes, ErrorLog& log) : m_groups(bytes), m_nSize(bytes.size()) {
    if (m_nSize > kLargestFile) throw DrawingError(kTooLarge);
    if (IsDwg(bytes)) throw DrawingError("is a DWG drawing; it has to be saved as DXF");
    try {
        Read();
    } catch (const DrawingError& error) {
        if (m_eSection == Section::kNone) throw; // nothing of a drawing came before it
        log.Note(error);
    }
}

const DxfGroup* DxfFile::FindVariable(std::string_view name) const {
    const auto found = m_mapVariables.find(name);
    return found == m_mapVariables.end() ? nullptr : &found->second;
}

const DxfBlock* DxfFile::FindBlock(std::string_view name) const {
    const auto found = m_mapBlocks.find(name);
    return found == m_mapBlocks.end() ? nullptr : &found->second;
}

std::vector<DxfGroup> DxfFile::GroupsOf(const DxfEntity& entity) const {
    DxfGroups reader = m_groups;
    reader.GoTo(entity.begin);
    std::vector<DxfGroup> groups;
    groups.reserve(kFewGroups);
    for (DxfGroup group; reader.Here().byte - entity.begin.byte < entity.size && reader.Next(group);)
        if (group.code != kComment) groups.push_back(group);
    return groups;
}

void DxfFile::Read() {
    bool sectionNameNext = false;
    DxfGroup group;
    for (auto begin = m_groups.Here(); m_groups.Next(group); begin = m_groups.Here()) {
        if (group.code == kComment) continue;
        if (group.code == 0) {
            if (group.text == "EOF") return;
            sectionNameNext = group.text == "SECTION";
            if (sectionNameNext || group.text == "ENDSEC") m_eSection = Section::kSkipped;
            StartEntity(group, begin);
        } else if (sectionNameNext && group.code == 2) {
            sectionNameNext = false;
            m_eSection = SectionOf(group.text);
        } else {
            AddGroup(group);
        }
    }
    if (m_eSection == Section::kNone)
        throw DrawingError(m_groups.Where() + ": the file holds no section, it is no DXF file");
    throw DrawingError(m_groups.Where() + ": the file ends before its EOF mark");
}

// Where an entity or record that begins now is kept; null when it is not.
std::vector<DxfEntity>* DxfFile::Owner(std::string_view type) {
    if (m_pBlock) return &m_pBlock->entities;
    if (m_eSection == Section::kEntities) return &m_vecEntities;
    const bool isRecord = m_eSection == Section::kTables && type != "TABLE" && type != "ENDTAB";
    return isRecord ? &m_vecRecords : nullptr;
}

// A group 0: the entity or block before it has ended. What begins is an entity of the drawing, of a block, a
// block itself, or something between them that is not kept.
void DxfFile::StartEntity(const DxfGroup& group, const DxfGroups::Place& begin) {
    const bool continuesPolyline = m_pEntity && m_bInVertices && group.text == "VERTEX";
    m_bInVertices = m_bInVertices && continuesPolyline;
    if (continuesPolyline) return AddGroup(group);
    m_pEntity = nullptr;
    m_bInBlockHeader = m_eSection == Section::kBlocks && group.text == "BLOCK";
    if (m_bInBlockHeader || group.text == "ENDBLK" || group.text == "SECTION") m_pBlock = nullptr;
    if (m_bInBlockHeader) m_newBlock = {};
    std::vector<DxfEntity>* owner = Owner(group.text);
    if (!owner) return;
    if (++m_nEntities > kMostEntities)
        throw DrawingError(group.Where() + ": the file holds too many entities");
    owner->push_back({begin});
    m_pEntity = &owner->back();
    m_nEntityGroups = 0;
    AddGroup(group);
    m_bInVertices = group.text == "POLYLINE";
}

// A group behind the group 0 of an entity or a block, or of a variable; others are passed over.
void DxfFile::AddGroup(const DxfGroup& group) {
    if (m_pEntity) {
        if (++m_nEntityGroups > kMostEntityGroups)
            throw DrawingError(group.Where() + ": the entity holds too many groups");
        m_pEntity->size = m_groups.Here().byte - m_pEntity->begin.byte;
    } else if (m_bInBlockHeader) {
        // the name comes before or after the base point, so that both find the block they belong to
        DxfBlock& block = m_pBlock ? *m_pBlock : m_newBlock;
        if (group.code == 10) block.baseX = group.AsNumber();
        if (group.code == 20) block.baseY = group.AsNumber();
        if (group.code == 2 && !m_pBlock) m_pBlock = &(m_mapBlocks[std::string(group.text)] = m_newBlock);
    } else if (m_eSection == Section::kHeader) {
        if (!m_variable.empty()) m_mapVariables[m_variable] = group;
        if (m_mapVariables.size() > kMostVariables)
            throw DrawingError(group.Where() + ": the header holds too many variables");
        m_variable = group.code == 9 ? group.text : std::string_view();
    }
}

} // namespace host
