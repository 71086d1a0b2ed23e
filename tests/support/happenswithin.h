#pragma once

#include <functional>

// Runs the event loop until condition() holds or timeoutMs have passed, and
// says whether it held. For checks that something does NOT happen, which no
// signal can announce: QVERIFY(!happensWithin(300, [&] { return requests > 0; }))
// gives the code under test the whole time to do it wrongly. Deferred
// deletions are carried out on the way, as QTest::qWait does.
bool happensWithin(int timeoutMs, const std::function<bool()> &condition);
