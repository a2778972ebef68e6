#include <chrono>
#include <functional>
#include <vector>

#include <qev/message.h>

#include "support/patience.h"
#include "support/random.h"

namespace {

using namespace qev;

std::string s_heard;                // the names of the subscribers that were called
std::function<void(char)> s_onCall; // what a subscriber does, by its name

int Hear(const char*, void* user, int value, const char* text) {
    s_heard += value == 5 ? *static_cast<char*>(user) : *text;
    if (s_onCall) s_onCall(s_heard.back());
    return -1;
}

MsgTopicSubscriber Subscribe(const std::string& topic, char& name, MsgTopicCallback callback = Hear) {
    return {SubscribeMsgTopic(topic.c_str(), callback, &name), topic, callback, &name};
}

char a = 'a', b = 'b', c = 'c', n = 'n';

TEST(TopicBus, IdsCountUpFromOne) { // the first case of the program
    EXPECT_EQ(SubscribeMsgTopic(nullptr, Hear, nullptr), -1);
    EXPECT_EQ(SubscribeMsgTopic("T", nullptr, nullptr), -1);
    for (const int id : {1, 2}) EXPECT_EQ(Subscribe("T", a).id, id);
    UnsubscribeMsgTopic(nullptr, Hear);
    UnsubscribeMsgTopic("T", Hear);
    EXPECT_EQ(PublishMsgTopic(nullptr, 5, ""), -1);
}

TEST(TopicBus, ChangesDuringADelivery) {
    const int ids[] = {Subscribe("T", a).id, Subscribe("T", b).id};
    Subscribe("T", c);
    s_onCall = [&](char name) {
        if (s_heard == "a") {
            for (int i = 0; i < 6; ++i) Subscribe("T", n); // moves the list
            PublishMsgTopic("T", 5, "");                   // the first that calls the new ones
        }
        if (name == 'a')
            for (const int id : ids) UnsubscribeMsgTopic(id);
    };
    EXPECT_EQ(PublishMsgTopic("T", 5, ""), 2) << "b has ended, and the new ones are not called yet";
    EXPECT_EQ(s_heard, "aacnnnnnnc");
    s_onCall = [](char) { UnsubscribeMsgTopic("T", Hear), throw 1; };
    EXPECT_THROW(PublishMsgTopic("T", 5, ""), int);
    s_onCall = nullptr;
    EXPECT_EQ(PublishMsgTopic("T", 5, ""), 0);
}

TEST(TopicBus, WhatHasEndedTakesNoTime) {
    const auto start = std::chrono::steady_clock::now();
    s_onCall = [](char) { UnsubscribeMsgTopic("T", Hear); };
    for (int i = 0; i < 50'000; ++i) Subscribe("T", a), PublishMsgTopic("T", 5, "");
    s_onCall = nullptr;
    const int first = SubscribeMsgTopic("T", Hear, &a);
    for (int i = 1; i < 70'000; ++i) SubscribeMsgTopic("T", Hear, &a);
    for (int i = 0; i < 70'000; ++i) UnsubscribeMsgTopic(first + i); // each moves few of the others
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::duration<double>(test::Patience()))
        << "the list keeps what has ended";
}

// Any history answers like a plain list of subscriptions.
TEST(TopicBus, AnswersAsAListDoes) {
    const MsgTopicCallback callbacks[] = {Hear, [](auto... arguments) { return Hear(arguments...); }};
    const std::string topics[] = {"A", "a", "A topic of thirty characters"};
    std::vector<MsgTopicSubscriber> list;
    test::Random random;
    for (int i = 0; i < 3000; ++i) {
        const std::string& topic = topics[random.Int(0, 2)];
        const auto callback = callbacks[random.Int(0, 1)];
        if (random.Coin()) {
            list.push_back(Subscribe(topic, random.Coin() ? a : b, callback));
        } else if (random.Int(0, 20) > 0) {
            const int id = list.empty() ? 0 : random.Int(list.front().id, list.back().id);
            UnsubscribeMsgTopic(id);
            std::erase_if(list, [&](const auto& s) { return s.id == id; });
        } else {
            UnsubscribeMsgTopic(topic.c_str(), callback);
            std::erase_if(list, [&](const auto& s) { return s.topic == topic && s.callback == callback; });
        }
        std::string expected;
        for (const auto& s : list)
            if (s.topic == topic) expected += *static_cast<char*>(s.user);
        s_heard.clear();
        ASSERT_EQ(PublishMsgTopic(topic.c_str(), 5, "?"), static_cast<int>(expected.size()));
        ASSERT_EQ(s_heard, expected) << i;
    }
}

} // namespace
