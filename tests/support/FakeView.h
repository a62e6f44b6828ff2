// A main window that remembers what it was told to show.
#pragma once

#include "app/session/Session.h"
#include "support/RecordingSurface.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

struct FakeView : MainView {
    RecordingSurface surface{800, 600};
    Index pointCount = -1;
    Index levelCount = -1;
    std::vector<bool> visible;
    std::string counts;
    std::string remark;
    int working = 0;
    int closes = 0;
    int linesSelected = 0;
    std::string title3D;
    std::string note;
    int findingsShown = 0;
    int sheetsShown = 0;
    std::optional<PlanPoint> mark;

    DrawSurface& MapSurface() override { return surface; }
    void ShowPointCount(Index count) override { pointCount = count; }
    void ShowLevelCount(Index count) override { levelCount = count; }
    void SetResultViewsVisible(bool on) override { visible.push_back(on); }
    void ShowRecentFiles() override {}
    void ShowTriangles3D(const PointSet&, const TriangleList& triangles,
                         const std::string& title) override {
        title3D = title + ", " + std::to_string(triangles.count);
    }
    void ShowFindings() override { ++findingsShown; }
    void ShowSheet() override { ++sheetsShown; }
    void ShowMark(std::optional<PlanPoint> place) override { mark = place; }
    void ShowNote(const std::string& text) override { note = text; }
    void ShowStatus(const std::string& newCounts, const std::string& newRemark) override {
        counts = newCounts;
        remark = newRemark;
    }
    void BeginWork() override { ++working; }
    void ShowProgress(double) override {
        if (--progressLeft == 0) {
            atThatMoment();
        }
    }
    /// What a user does when progress is shown for the n-th time from now.
    void AfterProgress(int n, std::function<void()> act) {
        progressLeft = n;
        atThatMoment = std::move(act);
    }
    int progressLeft = 0;
    std::function<void()> atThatMoment;
    void EndWork() override { --working; }
    void SelectLines() override { ++linesSelected; }
    [[nodiscard]] WindowBox Box() const override { return {10, 20, 300, 200}; }
    [[nodiscard]] bool IsMinimised() const override { return false; }
    void CloseWindow() override { ++closes; }
};

} // namespace terravo
