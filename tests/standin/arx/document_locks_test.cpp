#include "tests/standin/arx/drawing_fixture.h"

namespace {

using DocumentLocksTest = DrawingTest;

AcApDocument* document()
{
    return acDocManagerPtr()->curDocument();
}

TEST_F(DocumentLocksTest, LocksAreCounted)
{
    EXPECT_EQ(standin::documentLocks(), 0);
    EXPECT_EQ(document()->lockMode(), AcAp::kNotLocked);
    const AcDbObjectId line = idOf(addLine());
    AcDbEntity* opened = nullptr;
    acDocManagerPtr()->lockDocument(document(), AcAp::kRead, nullptr, nullptr, true);
    EXPECT_EQ(acdbOpenObject(opened, line, AcDb::kForWrite), Acad::eLockViolation);
    acDocManagerPtr()->unlockDocument(document());
    standin::clearBreaches();
    acDocManagerPtr()->lockDocument(document(), AcAp::kWrite, nullptr, nullptr, true);
    acDocManagerPtr()->lockDocument(document(), AcAp::kRead, nullptr, nullptr, true);
    EXPECT_EQ(standin::documentLocks(), 2);
    EXPECT_EQ(document()->lockMode(), AcAp::kWrite);
    acDocManagerPtr()->unlockDocument(document());
    acDocManagerPtr()->unlockDocument(document());
    EXPECT_EQ(standin::documentLocks(), 0);
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(DocumentLocksTest, UnlockingWithoutALockIsABreach)
{
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(document()), Acad::eLockViolation);
    EXPECT_EQ(standin::breaches().size(), 1u);
    EXPECT_EQ(acDocManagerPtr()->lockDocument(nullptr), Acad::eNoDocument);
    EXPECT_EQ(standin::breaches().size(), 2u);
}

TEST_F(DocumentLocksTest, LeftoverLocksAreToldAtTheClosing)
{
    acDocManagerPtr()->lockDocument(document());
    acDocManagerPtr()->lockDocument(document());
    standin::closeDrawing();
    ASSERT_EQ(standin::breaches().size(), 1u);
    EXPECT_NE(standin::breaches()[0].find("2 document locks"), std::string::npos) << standin::breaches()[0];
    standin::newDrawing();
    EXPECT_EQ(standin::documentLocks(), 0);
}

TEST_F(DocumentLocksTest, SideDatabasesNeedNoLock)
{
    AcDbDatabase side(false, true);
    AcDbObjectId dictionary;
    ASSERT_EQ(AcDbRasterImageDef::createImageDictionary(&side, dictionary), Acad::eOk);
    auto* opened = open<AcDbDictionary>(dictionary, AcDb::kForWrite);
    EXPECT_EQ(opened->numEntries(), 0u);
    opened->close();
    EXPECT_TRUE(standin::breaches().empty());
}

} // namespace
