// A command of a session at work.
//
// Data: the session. Method: the view hears of the beginning and, on every way out, of the end; a
// new command forgets the request to stop the one before.
#pragma once

#include "app/session/Session.h"

namespace terravo {

class Session::WorkGuard {
public:
    explicit WorkGuard(Session& session) : session_(session) {
        if (session_.depth_++ == 0) {
            session_.stop_.Reset();
            session_.wasInterrupted_ = false;
        }
        session_.view_->BeginWork();
    }
    WorkGuard(const WorkGuard&) = delete;
    WorkGuard& operator=(const WorkGuard&) = delete;
    ~WorkGuard() {
        session_.view_->EndWork();
        --session_.depth_;
    }

private:
    Session& session_;
};

} // namespace terravo
