#pragma once

#include <xcb/xcb.h>

// An X server started by a test runner resets whenever its last client leaves, and a
// connection made during the reset is refused. Each test process therefore waits for the
// server and keeps one connection of its own open until it exits, so the count never drops
// to zero while Qt connects.
class TestDisplayHold
{
public:
    TestDisplayHold();
    ~TestDisplayHold();
    TestDisplayHold(const TestDisplayHold &) = delete;
    TestDisplayHold &operator=(const TestDisplayHold &) = delete;

private:
    xcb_connection_t *m_connection = nullptr;
};
