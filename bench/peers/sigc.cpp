#include <functional>
#include <string_view>
#include <unordered_map>

#include <sigc++/sigc++.h>

#include "peers.h"

namespace qev::bench {
namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using Signal = sigc::signal<int(const char*, int, const char*)>;

} // namespace

struct SigcTopics::Table {
    std::unordered_map<std::string, Signal, TextHash, std::equal_to<>> signals;
};
SigcTopics::SigcTopics() : m_pTable(std::make_unique<Table>()) {}
SigcTopics::~SigcTopics() = default;
void SigcTopics::Subscribe(const std::string& topic, MsgTopicCallback callback, void* user) {
    m_pTable->signals[topic].connect([callback, user](const char* name, int value, const char* text) {
        return callback(name, user, value, text);
    });
}
int SigcTopics::Publish(const char* topic, int value, const char* text) const {
    const auto found = m_pTable->signals.find(std::string_view(topic));
    return found == m_pTable->signals.end() ? 0 : found->second.emit(topic, value, text);
}

} // namespace qev::bench
