/// \file
/// The message bus of the process: callbacks subscribe to a topic, a publication calls them at once.
///
/// A topic is any text; topics are equal when their bytes are. One thread uses the bus, the one with the user
/// interface.
#pragma once

#include <string>

#include <qev/export.h>

namespace qev {

/// Gets the publisher's topic, value and text, and the pointer that was given with the subscription. What it
/// answers is not used.
using MsgTopicCallback = int (*)(const char* topic, void* user, int value, const char* text);

/// One subscription as the bus keeps it.
struct MsgTopicSubscriber {
    int id;                    ///< from 1 on, unique in the process
    std::string topic;         ///< a copy of the text
    MsgTopicCallback callback; ///< null once the subscription has ended
    void* user;                ///< handed to the callback as it is; never read, never freed
};

/// Adds a subscription behind all earlier ones and answers its id: 1 for the first of the process, then 2, 3
/// and so on, never one twice. The topic is copied; the user pointer is passed back as it is. The same
/// callback may be subscribed more than once and is then called as often. -1, and no id is used up, when the
/// topic or the callback is null or memory is refused.
QEVCOMMON_API int SubscribeMsgTopic(const char* topic, MsgTopicCallback callback, void* user);

/// Ends the subscription with an id; an unknown one is ignored. A subscription that has ended is never called
/// again, not even by a publication that is under way.
QEVCOMMON_API void UnsubscribeMsgTopic(int id);
/// Ends all subscriptions of a callback to a topic. Null and unknown ones are ignored.
QEVCOMMON_API void UnsubscribeMsgTopic(const char* topic, MsgTopicCallback callback);

/// Calls the subscribers of a topic in the order of their subscriptions and answers how many were called; -1
/// for a null topic. A callback may subscribe, unsubscribe and publish: a subscription made meanwhile is
/// first called by the next publication. What a callback throws ends the publication and reaches the caller.
///
/// When the library's statics are gone, at the end of the process, the bus has no subscribers and takes none.
QEVCOMMON_API int PublishMsgTopic(const char* topic, int value, const char* text);

} // namespace qev
