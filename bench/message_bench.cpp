// Publications and ends of subscriptions.
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <qev/message.h>

#include "message/raw_loop.h"
#include "peers/peers.h"
#include "support/work.h"

namespace {

using namespace qev::bench;

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

// Counts the calls of one row, whose subscriptions it ends.
class Counter {
public:
    Counter() = default;
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;
    ~Counter() {
        for (const int id : m_ids) qev::UnsubscribeMsgTopic(id);
    }
    void Subscribe(const std::string& topic) {
        m_ids.push_back(qev::SubscribeMsgTopic(topic.c_str(), Count, &calls));
    }
    int calls = 0;

private:
    std::vector<int> m_ids;
};

// A row that publishes: subscribe(counter) gives what calls publish(topic), and the answer is the number of
// calls.
template <class Subscribe>
Row Publish(Subscribe subscribe) {
    return Ask([subscribe] {
        const auto counter = std::make_shared<Counter>();
        return [counter, publish = subscribe(*counter)](int) {
            const char* topic = "Refresh";
            benchmark::DoNotOptimize(topic);
            publish(topic);
            return counter->calls;
        };
    });
}

void ByBus(const char* topic) {
    qev::PublishMsgTopic(topic, 1, "all");
}

std::vector<std::string> OtherTopics() {
    std::vector<std::string> topics;
    topics.reserve(kOtherTopics);
    for (int i = 0; i < kOtherTopics; ++i) topics.push_back("Other" + std::to_string(i));
    return topics;
}

const bool one = Add({"publish to 1 of 10001",
                      Publish([](Counter& counter) {
                          for (const std::string& topic : OtherTopics()) counter.Subscribe(topic);
                          counter.Subscribe("Refresh");
                          return ByBus;
                      }),
                      {{"libsigc++", Publish([](Counter& counter) {
                            const auto signals = std::make_shared<SigcTopics>();
                            for (const std::string& topic : OtherTopics())
                                signals->Subscribe(topic, Count, &counter.calls);
                            signals->Subscribe("Refresh", Count, &counter.calls);
                            return [signals](const char* topic) { signals->Publish(topic, 1, "all"); };
                        })}},
                      Publish([](Counter& counter) {
                          const auto table = std::make_shared<Table>();
                          for (const std::string& topic : OtherTopics())
                              (*table)[topic] = {Count, &counter.calls};
                          (*table)["Refresh"] = {Count, &counter.calls};
                          return [table](const char* topic) {
                              const auto found = table->find(std::string_view(topic));
                              if (found != table->end())
                                  found->second.callback(topic, found->second.user, 1, "all");
                          };
                      }),
                      {0.4, 1.3}});

const bool crowd =
    Add({"publish to 1000",
         Publish([](Counter& counter) {
             for (int i = 0; i < kCrowd; ++i) counter.Subscribe("Refresh");
             return ByBus;
         }),
         {{"libsigc++", Publish([](Counter& counter) {
               const auto signals = std::make_shared<SigcTopics>();
               for (int i = 0; i < kCrowd; ++i) signals->Subscribe("Refresh", Count, &counter.calls);
               return [signals](const char* topic) { signals->Publish(topic, 1, "all"); };
           })}},
         Publish([](Counter& counter) {
             const std::vector<RawSubscriber> subscribers(kCrowd, {Count, &counter.calls});
             return [subscribers](const char* topic) { CallEach(subscribers, topic, 1, "all"); };
         }),
         {1, 1.3}});

// Among many subscriptions beside among few.
template <int kSubscribed>
Row SubscribeAndEnd() {
    return Ask([] {
        const auto counter = std::make_shared<Counter>();
        for (int i = 0; i < kSubscribed; ++i) counter->Subscribe("Refresh");
        return [counter](int) {
            qev::UnsubscribeMsgTopic(qev::SubscribeMsgTopic("Refresh", Count, &counter->calls));
            return counter->calls;
        };
    });
}
const bool end =
    Add({"end 1 of 10000, not of 10", SubscribeAndEnd<kOtherTopics>(), {}, SubscribeAndEnd<10>(), {0, 1.3}});

} // namespace
