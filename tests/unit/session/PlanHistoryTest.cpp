#include "app/session/PlanHistory.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

SurfacePlan Without(std::vector<Index> points) {
    SurfacePlan plan;
    plan.excluded = std::move(points);
    return plan;
}

TEST(PlanHistory, GoesBackAndForwardByNamedSteps) {
    PlanHistory history;
    EXPECT_FALSE(history.CanUndo() || history.CanRedo());
    EXPECT_EQ(history.Undo(), SurfacePlan()) << "there is nothing to undo";
    history.Add(Without({1}), "exclude 1");
    history.Add(Without({1, 2}), "exclude 2");
    EXPECT_EQ(history.UndoName(), "exclude 2");
    EXPECT_EQ(history.Undo(), Without({1}));
    EXPECT_EQ(history.RedoName(), "exclude 2");
    EXPECT_EQ(history.UndoName(), "exclude 1");
    EXPECT_EQ(history.Redo(), Without({1, 2}));
    EXPECT_EQ(history.Redo(), Without({1, 2})) << "there is nothing to do again";
    history.Undo();
    history.Undo();
    EXPECT_EQ(history.Present(), SurfacePlan());
    history.Add(Without({7}), "exclude 7");
    EXPECT_FALSE(history.CanRedo()) << "the new step takes the place of those undone";
    EXPECT_EQ(history.Undo(), SurfacePlan());
    EXPECT_FALSE(history.CanUndo());
}

TEST(PlanHistory, KnowsWhetherThePresentStateIsTheSavedOne) {
    PlanHistory history;
    EXPECT_TRUE(history.IsSaved());
    history.Add(Without({1}), "one");
    EXPECT_FALSE(history.IsSaved());
    history.MarkSaved();
    history.Add(Without({1, 2}), "two");
    EXPECT_FALSE(history.IsSaved());
    history.Undo();
    EXPECT_TRUE(history.IsSaved()) << "undone as far as it was saved";
    history.Undo();
    EXPECT_FALSE(history.IsSaved());
    history.Add(Without({3}), "three");
    history.Undo();
    EXPECT_FALSE(history.IsSaved());
    history.Redo();
    EXPECT_FALSE(history.IsSaved()) << "the saved state is gone, whatever stands in its place";
    history.Clear(Without({5}));
    EXPECT_TRUE(history.IsSaved());
    EXPECT_FALSE(history.CanUndo() || history.CanRedo());
    EXPECT_EQ(history.Present(), Without({5}));
}

} // namespace
} // namespace terravo
