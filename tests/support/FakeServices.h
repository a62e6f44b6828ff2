// Services for tests: they touch nothing and remember what they were asked.
#pragma once

#include "app/project/ProjectServices.h"
#include "gis/GisChoice.h"
#include "survey/import/ImportChoice.h"
#include "util/AppError.h"
#include "util/Services.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

struct FakeMessages : MessageService {
    struct Box {
        std::string text;
        std::string title;

        bool operator==(const Box&) const = default;
    };
    std::vector<Box> boxes;
    std::vector<Box> informations;

    void ShowInformation(const std::string& text, const std::string& title) override {
        informations.push_back({text, title});
    }
    void ShowCritical(const std::string& text, const std::string& title) override {
        boxes.push_back({text, title});
    }
};

struct FakeClipboard : ClipboardService {
    std::optional<std::string> text;
    int clears = 0;

    [[nodiscard]] std::optional<std::string> Text() const override { return text; }
    void SetText(const std::string& value) override { text = value; }
    void Clear() override {
        text.reset();
        ++clears;
    }
};

/// Answers every dialog with the same path, or with an error.
struct FakeDialogs : FileDialogService {
    std::vector<FileDialogPlan> plans;
    std::optional<std::string> answer; // nothing: the user cancels
    std::optional<AppError> error;

    std::optional<std::string> Choose(const FileDialogPlan& plan) override {
        plans.push_back(plan);
        if (error) {
            throw AppError(*error);
        }
        return answer;
    }
};

/// Answers every question about a file with the same choice.
struct FakeImports : ImportDialogService {
    std::vector<Inspection> asked;
    std::optional<ImportChoice> answer; // nothing: the user cancels

    std::optional<ImportChoice> Ask(const std::string& /*path*/, const Inspection& inspection,
                                    const std::optional<ImportPlan>& /*remembered*/) override {
        asked.push_back(inspection);
        return --forgetsAfter == 0 ? std::nullopt : answer;
    }
    int forgetsAfter = 0; // questions: this one is left unanswered
};

/// Answers every question about a file of another program with the same plan.
struct FakeGisDialogs : GisDialogService {
    std::vector<GisPlan> begins;
    std::optional<GisPlan> answer; // nothing: the user cancels

    std::optional<GisPlan> Ask(const std::string& /*path*/, const GisSource& /*source*/,
                               const GisPlan& begin) override {
        begins.push_back(begin);
        return answer;
    }
};

/// Answers the questions about projects, each kind always alike.
struct FakeProjectQuestions : ProjectQuestions {
    std::vector<std::string> asked;
    SaveAnswer save = SaveAnswer::Cancel;
    bool goesOn = false;
    RestoreAnswer restore = RestoreAnswer::Later;

    SaveAnswer AskToSave(const std::string& name) override {
        asked.push_back("save " + name);
        return save;
    }
    bool AskToGoOn(const std::string& sentence) override {
        asked.push_back(sentence);
        return goesOn;
    }
    RestoreAnswer AskToRestore(const std::string& name) override {
        asked.push_back("restore " + name);
        return restore;
    }
};

/// Unlike the real service it returns, so a test sees what the caller does next.
struct FakeProgramEnd : ProgramEndService {
    int ends = 0;

    void EndAtOnce() override { ++ends; }
};

struct FakeLog : LogService {
    std::vector<std::string> lines;

    void Write(const std::string& line) override { lines.push_back(line); }
};

/// Each reading comes `tick` seconds after the one before.
struct FakeClock : ClockService {
    mutable double now = 0;
    double tick = 0;

    [[nodiscard]] double SecondsOfDay() const override {
        const double reading = now;
        now += tick;
        return reading;
    }
};

} // namespace terravo
