#include <functional>
#include <list>
#include <string>
#include <vector>

#include <qev/message.h>

#include <gtest/gtest.h>

#include "support/random.h"

namespace {

using qev::PublishMsgTopic;
using qev::SubscribeMsgTopic;
using qev::UnsubscribeMsgTopic;

std::string s_heard; // the names of those that were called

struct Listener {
    char name;
    std::function<void()> act;
};

int Hear(const char*, void* user, int value, const char* text) {
    const auto& listener = *static_cast<Listener*>(user);
    s_heard += value == 5 ? listener.name : *text;
    if (listener.act) listener.act();
    return -1;
}
int HearAlso(const char* topic, void* user, int value, const char* text) {
    return Hear(topic, user, value, text);
}

std::string Heard(const std::string& topic) {
    s_heard.clear();
    const int called = PublishMsgTopic(topic.c_str(), 5, "?");
    EXPECT_EQ(called, static_cast<int>(s_heard.size()));
    return s_heard;
}

TEST(TopicBus, IdsCountUpFromOne) { // the first case of the program
    EXPECT_EQ(SubscribeMsgTopic(nullptr, Hear, nullptr), -1);
    EXPECT_EQ(SubscribeMsgTopic("T", nullptr, nullptr), -1);
    EXPECT_EQ(SubscribeMsgTopic("T", Hear, nullptr), 1);
    UnsubscribeMsgTopic(1);
    EXPECT_EQ(SubscribeMsgTopic("T", Hear, nullptr), 2);
    UnsubscribeMsgTopic(2);
    EXPECT_EQ(PublishMsgTopic(nullptr, 5, ""), -1);
}

TEST(TopicBus, ChangesDuringADelivery) {
    std::list<Listener> listeners;
    std::vector<int> ids;
    const auto subscribe = [&](char name, std::function<void()> act = {}) {
        ids.push_back(SubscribeMsgTopic("T", Hear, &listeners.emplace_back(name, std::move(act))));
    };
    subscribe('a', [&] {
        while (ids.size() < 9) subscribe('n'); // moves the list; the nested publication calls them
        if (s_heard == "a") PublishMsgTopic("T", 5, "");
        UnsubscribeMsgTopic(ids[0]); // the outer delivery goes on
        UnsubscribeMsgTopic(ids[1]);
    });
    subscribe('b');
    subscribe('c');
    s_heard.clear();
    EXPECT_EQ(PublishMsgTopic("T", 5, ""), 2);
    EXPECT_EQ(s_heard, "aacnnnnnnc");
    subscribe('c');
    EXPECT_EQ(Heard("T"), "cnnnnnnc");
    listeners.back().act = [] { UnsubscribeMsgTopic("T", Hear), throw 1; };
    EXPECT_THROW(PublishMsgTopic("T", 5, ""), int);
    EXPECT_EQ(Heard("T"), "");
}

// Any history answers like a plain list of subscriptions.
TEST(TopicBus, AnswersAsAListDoes) {
    std::vector<Listener> listeners{{'x', {}}, {'y', {}}, {'z', {}}};
    std::vector<qev::MsgTopicSubscriber> list;
    test::Random random;
    for (int i = 0; i < 3000; ++i) {
        const std::string topic =
            std::vector<std::string>{"A", "a", "A topic of thirty characters"}[random.Int(0, 2)];
        const auto callback = random.Coin() ? Hear : HearAlso;
        const int id = list.empty() ? 0 : random.Int(list.front().id, list.back().id);
        Listener& listener = listeners[random.Int(0, 2)];
        if (random.Coin()) {
            list.push_back(
                {SubscribeMsgTopic(topic.c_str(), callback, &listener), topic, callback, &listener});
        } else if (random.Int(0, 20) > 0) {
            UnsubscribeMsgTopic(id);
            std::erase_if(list, [&](const auto& s) { return s.id == id; });
        } else {
            UnsubscribeMsgTopic(topic.c_str(), callback);
            std::erase_if(list, [&](const auto& s) { return s.topic == topic && s.callback == callback; });
        }
        std::string expected;
        for (const auto& s : list)
            if (s.topic == topic) expected += static_cast<Listener*>(s.user)->name;
        ASSERT_EQ(Heard(topic), expected) << i;
    }
}

} // namespace
