// Several drawings open at once: which one is active, and what is locked.
#include <gmock/gmock.h>

#include "tests/standin/arx/drawing_fixture.h"

namespace {

using SeveralDrawingsTest = DrawingTest;
using testing::ElementsAre;

TEST_F(SeveralDrawingsTest, TheOneThatWasActiveBeforeTakesTheClosedOnesPlace)
{
    const standin::DrawingId first = standin::activeDrawing();
    ASSERT_FALSE(standin::addDrawing({}));
    const standin::DrawingId second = standin::activeDrawing();
    ASSERT_FALSE(standin::addDrawing({}));
    const standin::DrawingId third = standin::activeDrawing();
    EXPECT_THAT(standin::openDrawings(), ElementsAre(first, second, third));
    EXPECT_TRUE(standin::addDrawing(folder / L"missing.dxf")) << "what can't be opened leaves all as it was";
    EXPECT_EQ(standin::activeDrawing(), third);

    ASSERT_TRUE(standin::activateDrawing(first));
    ASSERT_TRUE(standin::activateDrawing(second));
    standin::closeDrawing();
    EXPECT_EQ(standin::activeDrawing(), first);
    standin::closeDrawing();
    EXPECT_EQ(standin::activeDrawing(), third);
    EXPECT_FALSE(standin::activateDrawing(second)) << "it is closed";
    EXPECT_THAT(standin::openDrawings(), ElementsAre(third));
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(SeveralDrawingsTest, ALockIsThatOfOneDrawing)
{
    const AcDbObjectId line = idOf(addLine());
    AcApDocument* const first = acDocManagerPtr()->curDocument();
    ASSERT_FALSE(standin::addDrawing({}));
    AcApDocument* const second = acDocManagerPtr()->curDocument();
    EXPECT_EQ(acDocManagerPtr()->document(line.database()), first);
    EXPECT_EQ(acDocManagerPtr()->document(nullptr), nullptr);

    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acDocManagerPtr()->lockDocument(second), Acad::eOk);
    EXPECT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite), Acad::eLockViolation);
    EXPECT_EQ(standin::breaches().size(), 1u);
    standin::clearBreaches();
    ASSERT_EQ(acDocManagerPtr()->lockDocument(first), Acad::eOk);
    EXPECT_EQ(standin::documentLocks(), 2);
    ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite), Acad::eOk);
    entity->close();
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(first), Acad::eOk);
    EXPECT_EQ(first->lockMode(), AcAp::kNotLocked);
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(second), Acad::eOk);
    EXPECT_TRUE(standin::breaches().empty());
    standin::closeDrawing();
}

// The desk's OPEN and CLOSE change the active drawing while they run.
TEST_F(SeveralDrawingsTest, ACommandLetsGoOfTheDrawingThatItBeganIn)
{
    AcApDocument* const first = acDocManagerPtr()->curDocument();
    standin::beginDeskCommand(L"open");
    EXPECT_EQ(first->lockMode(), AcAp::kWrite);
    ASSERT_FALSE(standin::addDrawing({}));
    AcApDocument* const second = acDocManagerPtr()->curDocument();
    EXPECT_EQ(second->lockMode(), AcAp::kNotLocked);
    standin::endDeskCommand(L"open", standin::CommandOutcome::ended);
    EXPECT_EQ(first->lockMode(), AcAp::kNotLocked);

    standin::beginDeskCommand(L"close");
    standin::closeDrawing();
    standin::endDeskCommand(L"close", standin::CommandOutcome::ended);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), first);
    EXPECT_EQ(first->lockMode(), AcAp::kNotLocked);
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(SeveralDrawingsTest, EachKnowsWhetherItWasChanged)
{
    const standin::Handle line = addLine();
    const standin::DrawingId first = standin::activeDrawing();
    ASSERT_FALSE(standin::saveDrawing(folder / L"first.dxf"));
    ASSERT_FALSE(standin::addDrawing({}));
    const standin::DrawingId second = standin::activeDrawing();
    standin::activateDrawing(first);
    ASSERT_TRUE(standin::eraseEntity(line));
    standin::activateDrawing(second);
    EXPECT_TRUE(standin::drawingModified(first));
    EXPECT_FALSE(standin::drawingModified(second) || standin::drawingModified());
    EXPECT_EQ(standin::drawingPath(first).filename(), L"first.dxf");
    EXPECT_TRUE(standin::drawingPath(second).empty());
    standin::closeDrawing();
}

} // namespace
