#include "host/fixture.h"

#include <cstdint>
#include <iomanip>
#include <list>
#include <sstream>

#include <qev/units.h>

#include "host/host.h"

namespace test {

std::string DxfFile(const std::string& entities, const std::string& blocks, const std::string& variables,
                    const std::string& records) {
    const auto section = [](const std::string& name, const std::string& content) {
        return content.empty() ? "" : " 0 SECTION 2 " + name + " " + content + " 0 ENDSEC";
    };
    std::istringstream in("999 a_test" + section("HEADER", variables) + section("TABLES", records)
                          + " 0 SECTION 2 BLOCKS " + blocks + " 0 ENDSEC 0 SECTION 2 ENTITIES " + entities
                          + " 0 ENDSEC 0 EOF");
    std::string lines;
    for (std::string word; in >> word;) lines += word + "\n";
    return lines;
}

std::string BinaryFile(const std::string& asciiFile) {
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    std::istringstream in(asciiFile);
    const auto append = [&](const auto& number, std::size_t size) {
        bytes.append(reinterpret_cast<const char*>(&number), size);
    };
    std::string code, value;
    while (std::getline(in, code) && std::getline(in, value)) {
        const int number = std::stoi(code);
        append(number, 2);
        if ((number >= 10 && number <= 59) || (number >= 210 && number <= 239))
            append(std::stod(value), 8);
        else if (number >= 60 && number <= 99)
            append(std::int64_t{std::stoi(value)}, number < 80 ? 2 : 4);
        else
            bytes.append(value.c_str(), value.size() + 1);
    }
    return bytes;
}

void ExpectContains(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts)
        EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
}

std::string BytesOf(const std::string& path) {
    return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
}

Ran RunHost(const std::string& line) {
    std::istringstream in("qev_host " + line);
    std::list<std::string> words;
    std::vector<const char*> arguments;
    for (std::string word; in >> std::quoted(word, '\'', '\1');)
        arguments.push_back(words.emplace_back(word).c_str());
    std::ostringstream out, errors;
    const UnitSystem before = *UnitSystem::GetUnitSystem();
    const int code = host::Main(static_cast<int>(arguments.size()), arguments.data(), out, errors);
    *UnitSystem::GetUnitSystem() = before; // a process has one unit, a run of the host another
    return {code, out.str(), errors.str()};
}

HostRun::~HostRun() {
    for (const std::string* path : {&drawing, &picture, &saved}) std::remove(path->c_str());
}

void HostRun::ExpectRuns(const std::vector<RunCase>& cases) const {
    for (const RunCase& expected : cases) {
        SCOPED_TRACE(expected.options + expected.entity);
        if (!expected.entity.empty()) Write(DxfFile(expected.entity));
        const Ran ran = RunHost(drawing + " --svg " + picture + " " + expected.options);
        EXPECT_EQ(ran.code, expected.code);
        ExpectContains(ran.out + ran.errors + BytesOf(picture), expected.parts);
    }
}

} // namespace test
