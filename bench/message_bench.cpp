#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <qev/message.h>

#include "message/raw_loop.h"
#include "support/pair.h"

namespace {

using benchmark::State;
using qev::bench::Pair;

constexpr int kOtherTopics = 10'000;
constexpr int kCrowd = 1'000;

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using Table = std::unordered_map<std::string, RawSubscriber, TextHash, std::equal_to<>>;

int Count(const char*, void* user, int value, const char*) {
    return *static_cast<int*>(user) += value;
}

std::string OtherTopic(int number) {
    return "Other" + std::to_string(number);
}

// Subscriptions of one run, which ends them.
class Subscriptions {
public:
    Subscriptions() = default;
    Subscriptions(const Subscriptions&) = delete;
    ~Subscriptions() {
        for (const int id : m_ids) qev::UnsubscribeMsgTopic(id);
    }
    void Add(const std::string& topic, int& counter) {
        m_ids.push_back(qev::SubscribeMsgTopic(topic.c_str(), Count, &counter));
    }

private:
    std::vector<int> m_ids;
};

const char* Hidden(const char* topic) {
    benchmark::DoNotOptimize(topic);
    return topic;
}

void Publish(State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(qev::PublishMsgTopic(Hidden("Refresh"), 1, "all"));
}

const bool one = Pair(
    "publish to 1 of 10,001", 1.3,
    [](State& state) {
        int counter = 0;
        Table table{{"Refresh", {Count, &counter}}};
        for (int i = 0; i < kOtherTopics; ++i) table[OtherTopic(i)] = {Count, &counter};
        for (auto _ : state) {
            const char* topic = Hidden("Refresh");
            const auto found = table.find(std::string_view(topic));
            if (found != table.end()) found->second.callback(topic, found->second.user, 1, "all");
        }
    },
    [](State& state) {
        int counter = 0;
        Subscriptions subscriptions;
        for (int i = 0; i < kOtherTopics; ++i) subscriptions.Add(OtherTopic(i), counter);
        subscriptions.Add("Refresh", counter);
        Publish(state);
    });

const bool crowd = Pair(
    "publish to 1,000", 1.3,
    [](State& state) {
        int counter = 0;
        const std::vector<RawSubscriber> subscribers(kCrowd, {Count, &counter});
        for (auto _ : state) CallEach(subscribers, Hidden("Refresh"), 1, "all");
    },
    [](State& state) {
        int counter = 0;
        Subscriptions subscriptions;
        for (int i = 0; i < kCrowd; ++i) subscriptions.Add("Refresh", counter);
        Publish(state);
    });

template <int kSubscribed>
void SubscribeAndEnd(State& state) {
    int counter = 0;
    Subscriptions subscriptions;
    for (int i = 0; i < kSubscribed; ++i) subscriptions.Add("Refresh", counter);
    for (auto _ : state) qev::UnsubscribeMsgTopic(qev::SubscribeMsgTopic("Refresh", Count, &counter));
}
const bool end = Pair("end 1 of 10,000, not of 10", 1.3, SubscribeAndEnd<10>, SubscribeAndEnd<kOtherTopics>);

} // namespace
