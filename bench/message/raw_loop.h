/// \file
/// The direct loop that the bus is measured against, in a library as the bus is: some processors take half as
/// long again for a call from a library into a program as for one within the program.
#pragma once

#include <vector>

#include <qev/message.h>

struct RawSubscriber {
    qev::MsgTopicCallback callback;
    void* user;
};

/// Calls the subscribers in their order.
QEV_EXPORT void CallEach(const std::vector<RawSubscriber>& subscribers, const char* topic, int value,
                         const char* text);
