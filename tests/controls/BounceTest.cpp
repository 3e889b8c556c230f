#include "ControlHost.h"
#include "Qxbounce.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

namespace {

// Counts every event of a bounce control.
struct Events {
    explicit Events(TQXBounce& b) {
        b.OnHitFloor = [this](QObject*) { ++floor; };
        b.OnHitLeftWall = [this](QObject*) { ++left; };
        b.OnHitRightWall = [this](QObject*) { ++right; };
        b.OnHitRoof = [this](QObject*) { ++roof; };
        b.OnStop = [this](QObject*) { ++stop; };
    }
    int floor = 0, left = 0, right = 0, roof = 0, stop = 0;
};

// A 200 x 100 field without gravity, the ball thrown from (x, y) at (xSpeed, ySpeed).
void throwBall(TQXBounce& b, int x, int y, int xSpeed, int ySpeed, int friction = 1) {
    b.resize(200, 100);
    b.SetGravitation(0);
    b.SetFriction(friction);
    b.SetStartXPos(x);
    b.SetStartYPos(y);
    b.SetStartXSpeed(xSpeed);
    b.SetStartYSpeed(ySpeed);
}

} // namespace

TEST(QXBounce, DefaultsAndClamps) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    EXPECT_EQ(b.size(), QSize(75, 50));
    EXPECT_EQ(b.sizeHint(), QSize(75, 50));
    EXPECT_EQ(b.Color(), clBlack);
    EXPECT_EQ((QList<int>{b.StartXPos(), b.StartYPos(), b.StartXSpeed(), b.StartYSpeed()}),
              (QList<int>{1, 1, 10, 10}));
    EXPECT_EQ((QList<int>{b.Friction(), b.Gravitation(), b.Interval()}), (QList<int>{1, 1, 0}));
    EXPECT_EQ(QSize(b.BallWidth(), b.BallHeight()), QSize(10, 10));
    EXPECT_FALSE(b.NoRefresh());
    // Running from the start, ticking once an interval is set.
    EXPECT_TRUE(b.Timer()->Enabled());
    EXPECT_FALSE(b.Timer()->IsActive());
    b.SetInterval(5);
    EXPECT_EQ(b.Interval(), 20);
    EXPECT_TRUE(b.Timer()->IsActive());
    b.SetStartXSpeed(150);
    EXPECT_EQ(b.StartXSpeed(), 100);
    b.SetStartYSpeed(-150);
    EXPECT_EQ(b.StartYSpeed(), -100);
    b.SetStartYPos(-5);
    EXPECT_EQ(b.StartYPos(), 0);
    b.SetStartXPos(500);
    EXPECT_EQ(b.StartXPos(), 75);
    b.SetFriction(200);
    EXPECT_EQ(b.Friction(), 100);
    b.SetGravitation(-1);
    EXPECT_EQ(b.Gravitation(), 0);
}

TEST(QXBounce, FloorWithAndWithoutFriction) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    Events events(b);
    throwBall(b, 50, 85, 0, 10);
    b.QXOnTime();
    // 95 + 10 reaches the floor at 100: back to 100 - 10 - 1, speed -Trunc(10 * 0.999).
    EXPECT_EQ(b.YPos(), 89);
    EXPECT_EQ(b.YSpeed(), -9);
    EXPECT_EQ(events.floor, 1);
    throwBall(b, 50, 85, 0, 10, 0);
    b.QXOnTime();
    EXPECT_EQ(b.YSpeed(), -10);
    EXPECT_EQ(events.floor, 2);
    // Gravity speeds the fall every tick.
    throwBall(b, 50, 10, 0, 2);
    b.SetGravitation(3);
    b.QXOnTime();
    EXPECT_EQ(b.YSpeed(), 5);
    EXPECT_EQ(b.YPos(), 15);
}

TEST(QXBounce, RollingSlowsAndStops) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    Events events(b);
    // A floor contact leaving |YSpeed| below 2 slows the roll: 5 becomes Trunc(4.995) = 4.
    throwBall(b, 50, 89, 5, 1);
    b.QXOnTime();
    EXPECT_EQ(b.YSpeed(), 0);
    EXPECT_EQ(b.XSpeed(), 4);
    EXPECT_EQ(events.floor, 1);
    EXPECT_TRUE(b.Timer()->Enabled());
    // With nothing left to move the throw ends: no floor event, the stop event, no timer.
    throwBall(b, 50, 89, 1, 1);
    b.QXOnTime();
    EXPECT_EQ(b.XSpeed(), 0);
    EXPECT_EQ(events.floor, 1);
    EXPECT_EQ(events.stop, 1);
    EXPECT_FALSE(b.Timer()->Enabled());
    // Start throws again (and this throw stops at once again); a friction change does not.
    b.Start();
    EXPECT_TRUE(b.Timer()->Enabled());
    EXPECT_EQ(QPoint(b.XPos(), b.YPos()), QPoint(50, 89));
    b.QXOnTime();
    EXPECT_EQ(events.stop, 2);
    b.SetFriction(5);
    EXPECT_EQ(b.XPos(), 51);
    // A rolling ball without friction never stops.
    throwBall(b, 50, 89, 3, 1, 0);
    for (int i = 0; i < 20; ++i)
        b.QXOnTime();
    EXPECT_EQ(std::abs(b.XSpeed()), 3);
    EXPECT_EQ(events.stop, 2);
}

TEST(QXBounce, WallsAndRoof) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    Events events(b);
    throwBall(b, 185, 40, 10, 0);
    b.QXOnTime();
    EXPECT_EQ(b.XPos(), 200 - 10 - 1);
    EXPECT_EQ(b.XSpeed(), -9);
    EXPECT_EQ(events.right, 1);
    throwBall(b, 3, 40, -5, 0);
    b.QXOnTime();
    EXPECT_EQ(b.XPos(), 1);
    EXPECT_EQ(b.XSpeed(), 4);
    EXPECT_EQ(events.left, 1);
    // A wall contact that leaves no sideways speed raises no event.
    throwBall(b, 0, 40, 0, 0);
    b.QXOnTime();
    EXPECT_EQ(b.XPos(), 1);
    EXPECT_EQ(events.left, 1);
    // The roof raises its event even when the new speed is 0.
    throwBall(b, 50, 0, 0, 0);
    b.QXOnTime();
    EXPECT_EQ(b.YPos(), 1);
    EXPECT_EQ(b.YSpeed(), 0);
    EXPECT_EQ(events.roof, 1);
    throwBall(b, 50, 5, 0, -8);
    b.QXOnTime();
    EXPECT_EQ(b.YSpeed(), 7);
    EXPECT_EQ(events.roof, 2);
}

TEST(QXBounce, MoveHandlerComesFirst) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    Events events(b);
    throwBall(b, 50, 85, 4, 10);
    QList<int> reported;
    b.OnMove = [&](QObject*, int& x, int& y, int w, int h, int& xs, int& ys) {
        reported = {x, y, w, h, xs, ys};
        // Caught in the air: no floor this tick.
        y = 20;
        ys = 0;
    };
    b.QXOnTime();
    EXPECT_EQ(reported, (QList<int>{54, 95, 10, 10, 4, 10}));
    EXPECT_EQ(QPoint(b.YPos(), b.YSpeed()), QPoint(20, 0));
    EXPECT_EQ(events.floor, 0);
}

TEST(QXBounce, DrawsTheBallOrMovesAControl) {
    qxtest::ControlHost host;
    TQXBounce b(&host);
    b.show();
    throwBall(b, 20, 20, 15, 0);
    QImage image = qxtest::renderControl(b);
    EXPECT_EQ(qxtest::pixelBGR(image, 25, 25), clWhite);
    b.QXOnTime();
    image = qxtest::renderControl(b);
    EXPECT_EQ(qxtest::pixelBGR(image, 40, 25), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(image, 25, 25), clBlack);
    // With NoRefresh every ball stays.
    b.SetNoRefresh(true);
    b.QXOnTime();
    image = qxtest::renderControl(b);
    EXPECT_EQ(qxtest::pixelBGR(image, 55, 25), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(image, 40, 25), clWhite);

    // Another control is the ball: its size counts and it is moved; nothing is drawn.
    auto* ball = new QWidget(&b);
    ball->resize(20, 15);
    ball->show();
    b.SetControl(ball);
    b.Start();
    EXPECT_EQ(QSize(b.BallWidth(), b.BallHeight()), QSize(20, 15));
    b.QXOnTime();
    EXPECT_EQ(ball->pos(), QPoint(b.XPos(), b.YPos()));
    EXPECT_EQ(b.XPos(), 35);
    // At the right wall the ball's own width counts.
    for (int i = 0; i < 12; ++i)
        b.QXOnTime();
    EXPECT_LE(b.XPos() + 20, 200);
    delete ball;
    EXPECT_EQ(b.Control(), nullptr);
    EXPECT_EQ(QSize(b.BallWidth(), b.BallHeight()), QSize(10, 10));
}
