#include "dxf_file.h"

#include <fstream>

namespace host {
namespace {

constexpr std::streamoff kLargestFile = 256 << 20; // bytes
constexpr std::size_t kMostGroups = 1 << 23;       // of entities; they take a third of a gigabyte

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
    const auto found = m_blocks.find(name);
    return found == m_blocks.end() ? nullptr : &found->second;
}

void DxfFile::Read(std::string_view bytes) {
    DxfGroups groups(bytes);
    bool sectionNameNext = false;
    for (DxfGroup group; groups.Next(group);) {
        if (group.code == 999) continue; // a comment
        if (group.code == 0) {
            if (group.text == "EOF") return;
            sectionNameNext = group.text == "SECTION";
            if (sectionNameNext || group.text == "ENDSEC") m_section = Section::kSkipped;
            StartEntity(group);
        } else if (sectionNameNext && group.code == 2) {
            sectionNameNext = false;
            if (group.text == "BLOCKS") m_section = Section::kBlocks;
            if (group.text == "ENTITIES") m_section = Section::kEntities;
        } else {
            AddGroup(group);
        }
    }
    if (m_section == Section::kNone)
        throw DrawingError(groups.Where() + ": the file holds no section, it is no DXF file");
    throw DrawingError(groups.Where() + ": the file ends before its EOF mark");
}

void DxfFile::StartEntity(const DxfGroup& group) {
    const bool continuesPolyline = m_entity && m_inVertices && group.text == "VERTEX";
    m_inVertices = m_inVertices && continuesPolyline;
    if (continuesPolyline) return AddGroup(group);
    m_entity = nullptr;
    m_inBlockHeader = m_section == Section::kBlocks && group.text == "BLOCK";
    if (m_inBlockHeader || group.text == "ENDBLK" || group.text == "SECTION") m_block = nullptr;
    if (m_inBlockHeader) m_newBlock = {};
    if (m_section != Section::kEntities && !m_block) return;
    std::vector<DxfEntity>& owner = m_block ? m_block->entities : m_entities;
    owner.push_back({static_cast<std::uint32_t>(m_groups.size()), 0});
    m_entity = &owner.back();
    AddGroup(group);
    m_inVertices = group.text == "POLYLINE";
}

void DxfFile::AddGroup(const DxfGroup& group) {
    if (m_entity) {
        if (m_groups.size() == kMostGroups)
            throw DrawingError(group.Where() + ": the file holds too many groups");
        m_groups.push_back(group);
        ++m_entity->groupCount;
    } else if (m_inBlockHeader) {
        // the name comes before or after the base point, so that both find the block they belong to
        DxfBlock& block = m_block ? *m_block : m_newBlock;
        if (group.code == 10) block.baseX = group.AsNumber();
        if (group.code == 20) block.baseY = group.AsNumber();
        if (group.code == 2 && !m_block) m_block = &(m_blocks[std::string(group.text)] = m_newBlock);
    }
}

} // namespace host
