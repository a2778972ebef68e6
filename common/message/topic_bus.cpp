// Subscriptions lie in one list for each topic, and a map leads from an id to its list. Ids rise, so that a
// list is sorted by them and the place of an id in it is found by halving. A publication and the end of a
// subscription by its id thus never look at other topics.
//
// A program publishes the same topics from the same literals again and again. So the topic that was found is
// remembered by the address of the publisher's text, which takes a third of the time that hashing the text
// and dividing by the number of buckets takes; the texts are compared all the same, as a buffer may hold
// another one now. What is remembered goes with its topic.
//
// Callbacks may do anything to the bus while they are called. Three rules make that safe. A list in delivery
// never loses an element: what ends only loses its callback, so that places stay what they are. It may grow,
// and then move; so a delivery goes by index, up to the number of subscribers that it began with, and holds
// no reference across a call except to the topic itself, which the map never moves. And whoever begins a
// delivery counts it, so that the list is tidied when the last one has left it, by its end or by an
// exception. To deliver from a copy of the list would be simpler, but would ask for memory at each
// publication and would call those that have ended meanwhile.
//
// Tidying waits until half of a list has ended: each removal then pays for at most one move, and ending n
// subscriptions one by one moves elements in proportion to n.

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <iterator>
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

class Bus;

// The bus while there is one, and whether it has been. Neither has a destructor, so that they may be read
// even after the end of the library's statics.
Bus* s_pBus = nullptr;
bool s_isOver = false;

class Bus {
public:
    Bus() { s_pBus = this; }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus() {
        s_pBus = nullptr;
        s_isOver = true;
    }

    int Subscribe(const char* topic, MsgTopicCallback callback, void* user);
    void Unsubscribe(int id);
    void Unsubscribe(std::string_view topic, MsgTopicCallback callback);
    int Publish(const char* topic, int value, const char* text);

private:
    class Delivery;

    Topics::pointer Find(const char* topic);
    void End(Topic& topic, MsgTopicSubscriber& subscriber);
    void Tidy(Topics::value_type& entry);

    Topics m_mapTopics;
    static constexpr int kNearBits = 6; // the topics that a program publishes all the time

    std::unordered_map<int, Topics::pointer> m_mapTopicOfId;
    Topics::pointer m_pNear[1 << kNearBits] = {}; // topics found lately, by the addresses of the texts
    int m_nIssued = 0;
};

// While one is alive the topic keeps its place and its subscribers theirs.
class Bus::Delivery {
public:
    Delivery(Bus& bus, Topics::value_type& entry) : m_rBus(bus), m_rEntry(entry) {
        ++entry.second.deliveries;
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    ~Delivery() {
        --m_rEntry.second.deliveries;
        if (m_rEntry.second.ended > 0) m_rBus.Tidy(m_rEntry);
    }

private:
    Bus& m_rBus;
    Topics::value_type& m_rEntry;
};

// What may fail comes first, so that a refusal leaves no subscription and uses no id up.
int Bus::Subscribe(const char* topic, MsgTopicCallback callback, void* user) {
    if (m_nIssued == INT_MAX) return -1;
    MsgTopicSubscriber subscriber{m_nIssued + 1, topic, callback, user};
    auto& entry = *m_mapTopics.try_emplace(topic).first;
    auto& subscribers = entry.second.subscribers;
    try {
        if (subscribers.size() == subscribers.capacity()) subscribers.reserve(2 * subscribers.size() + 1);
        m_mapTopicOfId.emplace(subscriber.id, &entry);
    } catch (const std::bad_alloc&) {
        Tidy(entry); // the topic may be new
        throw;
    }
    subscribers.push_back(std::move(subscriber));
    return ++m_nIssued;
}

void Bus::Unsubscribe(int id) {
    const auto found = m_mapTopicOfId.find(id);
    if (found == m_mapTopicOfId.end()) return;
    auto& entry = *found->second;
    End(entry.second, *std::ranges::lower_bound(entry.second.subscribers, id, {}, &MsgTopicSubscriber::id));
    Tidy(entry);
}

void Bus::Unsubscribe(std::string_view topic, MsgTopicCallback callback) {
    const auto found = m_mapTopics.find(topic);
    if (found == m_mapTopics.end()) return;
    for (MsgTopicSubscriber& subscriber : found->second.subscribers)
        if (subscriber.callback == callback) End(found->second, subscriber);
    Tidy(*found);
}

void Bus::End(Topic& topic, MsgTopicSubscriber& subscriber) {
    m_mapTopicOfId.erase(subscriber.id);
    subscriber.callback = nullptr;
    ++topic.ended;
}

// Removes what has ended from a topic's list, and the topic when nothing is left, unless a delivery runs or
// less than half of the list has ended.
void Bus::Tidy(Topics::value_type& entry) {
    auto& [text, topic] = entry;
    if (topic.deliveries > 0 || 2 * topic.ended < topic.subscribers.size()) return;
    std::erase_if(topic.subscribers, [](const MsgTopicSubscriber& s) { return !s.callback; });
    topic.ended = 0;
    if (!topic.subscribers.empty()) return;
    std::replace(std::begin(m_pNear), std::end(m_pNear), &entry, Topics::pointer());
    m_mapTopics.erase(m_mapTopics.find(text));
}

// Null when nobody has subscribed to the topic.
Topics::pointer Bus::Find(const char* topic) {
    constexpr std::uint64_t kSpread = 0x9E37'79B9'7F4A'7C15; // lays addresses of neighbours far apart
    const auto address = std::uint64_t{reinterpret_cast<std::uintptr_t>(topic)};
    Topics::pointer& near = m_pNear[address * kSpread >> (64 - kNearBits)];
    if (near && std::strcmp(near->first.c_str(), topic) == 0) return near;
    const auto found = m_mapTopics.find(std::string_view(topic));
    return found == m_mapTopics.end() ? nullptr : near = &*found;
}

int Bus::Publish(const char* topic, int value, const char* text) {
    const Topics::pointer found = Find(topic);
    if (!found) return 0;
    const Delivery delivery(*this, *found);
    const auto& subscribers = found->second.subscribers; // may grow and move meanwhile
    const std::size_t count = subscribers.size();
    int called = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const MsgTopicSubscriber& subscriber = subscribers[i];
        if (!subscriber.callback) continue;
        subscriber.callback(topic, subscriber.user, value, text);
        ++called;
    }
    return called;
}

// Null when the library's statics are gone: plug-ins may call from the ends of their own.
Bus* TheBus() {
    if (!s_pBus && !s_isOver) static Bus bus;
    return s_pBus;
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
