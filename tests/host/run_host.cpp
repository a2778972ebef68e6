#include "host/run_host.h"

#include <iomanip>
#include <list>
#include <sstream>

#include "host/host.h"

namespace test {

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
    const auto options = host::ParseOptions(static_cast<int>(arguments.size()), arguments.data());
    const int code = host::Run(options, out, errors);
    return {code, out.str(), errors.str()};
}

HostRun::~HostRun() {
    for (const std::string* path : {&drawing, &picture, &saved}) std::remove(path->c_str());
}

void HostRun::ExpectShown(const std::vector<ShownCase>& cases) const {
    for (const ShownCase& expected : cases) {
        SCOPED_TRACE(expected.name);
        Write(DxfFile(expected.entity));
        ExpectRuns({{"", 0, {expected.part}}});
    }
}

void HostRun::ExpectRuns(const std::vector<RunCase>& cases) const {
    for (const RunCase& expected : cases) {
        SCOPED_TRACE(expected.options);
        const Ran ran = RunHost(drawing + " --svg " + picture + " " + expected.options);
        EXPECT_EQ(ran.code, expected.code);
        ExpectContains(ran.out + ran.errors + BytesOf(picture), expected.parts);
    }
}

} // namespace test
