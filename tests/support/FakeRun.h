// The state and the services of one run, with a private folder, for tests.
#pragma once

#include "app/session/Session.h"
#include "support/FakeServices.h"
#include "support/FakeSettings.h"
#include "support/TemporaryFolder.h"

namespace terravo {

struct FakeRun {
    test::TemporaryFolder folder;
    RunState state;
    FakeMessages messages;
    FakeClipboard clipboard;
    FakeDialogs dialogs;
    FakeProgramEnd programEnd;
    FakeLog log;
    FakeClock clock;
    FakeSettings settings;
    FakeImports imports;
    FakeGisDialogs gis;
    ProjectServices* projects = nullptr; // none, unless a test is about them

    SessionServices Services() {
        return {messages, clipboard, dialogs, programEnd, log,
                clock,    settings,  imports, gis,        projects};
    }
};

} // namespace terravo
