#include <algorithm>
#include <climits>
#include <new>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <qev/message.h>

namespace qev {
namespace {

// The subscriptions to one topic, oldest first, and so in the order of their ids. One that has ended keeps
// its place, without a callback, until the list is tidied.
struct Topic {
    std::vector<MsgTopicSubscriber> subscribers;
    std::size_t ended = 0;
    int deliveries = 0; // under way, one inside the other
};

// Finds a topic without making a std::string of its text.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using Topics = std::unordered_map<std::string, Topic, TextHash, std::equal_to<>>;

// True from the end of the bus on; of a type that can be read until the process is gone.
bool s_isOver = false;

class Bus {
public:
    Bus() = default;
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus() { s_isOver = true; }

    int Subscribe(const char* topic, MsgTopicCallback callback, void* user);
    void Unsubscribe(int id);
    void Unsubscribe(std::string_view topic, MsgTopicCallback callback);
    int Publish(const char* topic, int value, const char* text);

private:
    class Delivery;

    void End(Topic& topic, MsgTopicSubscriber& subscriber);
    void Tidy(Topics::value_type& entry);

    Topics m_topics;
    std::unordered_map<int, Topics::pointer> m_topicOfId;
    int m_nIssued = 0;
};

// While one is alive the topic keeps its place and its subscribers theirs.
class Bus::Delivery {
public:
    Delivery(Bus& bus, Topics::value_type& entry) : m_bus(bus), m_entry(entry) { ++entry.second.deliveries; }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    ~Delivery() {
        --m_entry.second.deliveries;
        if (m_entry.second.ended > 0) m_bus.Tidy(m_entry);
    }

private:
    Bus& m_bus;
    Topics::value_type& m_entry;
};

// What may fail comes first, so that a refusal leaves no subscription and uses no id up.
int Bus::Subscribe(const char* topic, MsgTopicCallback callback, void* user) {
    if (m_nIssued == INT_MAX) return -1;
    MsgTopicSubscriber subscriber{m_nIssued + 1, topic, callback, user};
    auto& entry = *m_topics.try_emplace(topic).first;
    auto& subscribers = entry.second.subscribers;
    if (subscribers.size() == subscribers.capacity()) subscribers.reserve(2 * subscribers.size() + 1);
    m_topicOfId.emplace(subscriber.id, &entry);
    subscribers.push_back(std::move(subscriber));
    return ++m_nIssued;
}

void Bus::Unsubscribe(int id) {
    const auto found = m_topicOfId.find(id);
    if (found == m_topicOfId.end()) return;
    auto& entry = *found->second;
    End(entry.second, *std::ranges::lower_bound(entry.second.subscribers, id, {}, &MsgTopicSubscriber::id));
    Tidy(entry);
}

void Bus::Unsubscribe(std::string_view topic, MsgTopicCallback callback) {
    const auto found = m_topics.find(topic);
    if (found == m_topics.end()) return;
    for (MsgTopicSubscriber& subscriber : found->second.subscribers)
        if (subscriber.callback == callback) End(found->second, subscriber);
    Tidy(*found);
}

void Bus::End(Topic& topic, MsgTopicSubscriber& subscriber) {
    m_topicOfId.erase(subscriber.id);
    subscriber.callback = nullptr;
    ++topic.ended;
}

// Waits until half of a list has ended, so that ending many one by one does not move the rest each time.
void Bus::Tidy(Topics::value_type& entry) {
    auto& [text, topic] = entry;
    if (topic.deliveries > 0 || 2 * topic.ended < topic.subscribers.size()) return;
    std::erase_if(topic.subscribers, [](const MsgTopicSubscriber& s) { return !s.callback; });
    topic.ended = 0;
    if (topic.subscribers.empty()) m_topics.erase(m_topics.find(text));
}

int Bus::Publish(const char* topic, int value, const char* text) {
    const auto found = m_topics.find(std::string_view(topic));
    if (found == m_topics.end()) return 0;
    const Delivery delivery(*this, *found);
    const auto& subscribers = found->second.subscribers; // may grow and move meanwhile
    const int count = static_cast<int>(subscribers.size());
    int called = count;
    for (int i = 0; i < count; ++i) {
        const MsgTopicSubscriber& subscriber = subscribers[i];
        if (subscriber.callback)
            subscriber.callback(topic, subscriber.user, value, text);
        else
            --called;
    }
    return called;
}

// Null when the library's statics are gone: plug-ins may call from the ends of their own.
Bus* TheBus() {
    if (s_isOver) return nullptr;
    static Bus bus;
    return &bus;
}

} // namespace

int SubscribeMsgTopic(const char* topic, MsgTopicCallback callback, void* user) try {
    Bus* const bus = TheBus();
    return bus && topic && callback ? bus->Subscribe(topic, callback, user) : -1;
} catch (const std::bad_alloc&) {
    return -1;
}

void UnsubscribeMsgTopic(int id) {
    if (Bus* const bus = TheBus()) bus->Unsubscribe(id);
}

void UnsubscribeMsgTopic(const char* topic, MsgTopicCallback callback) {
    Bus* const bus = TheBus();
    if (bus && topic && callback) bus->Unsubscribe(topic, callback);
}

int PublishMsgTopic(const char* topic, int value, const char* text) {
    if (!topic) return -1;
    Bus* const bus = TheBus();
    return bus ? bus->Publish(topic, value, text) : 0;
}

} // namespace qev
