// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearray.h>
#include <QtCore/qpoint.h>
#include <QtCore/qtclasshelpermacros.h>

#include <cstddef>

/// An input device of Xorg's inputtest driver: it takes from a socket what hardware would report,
/// and the server treats it as that. The driver accepts one connection in the life of the server,
/// so a test program keeps one object of each kind. Each call returns when the server has dealt
/// with the input; the programs see it later. A device that cannot be reached ends the test.
class InputTestDevice
{
public:
    Q_DISABLE_COPY_MOVE(InputTestDevice)

protected:
    /// The device whose socket the environment variable \a variable names.
    explicit InputTestDevice(const char *variable);
    ~InputTestDevice();

    /// Sends one of the driver's event structures and waits until the server has dealt with it.
    template <typename Event> void send(Event event)
    {
        write(&event, sizeof event);
        waitForServer();
    }

private:
    void greet();
    void waitForServer();
    void write(const void *data, std::size_t size);
    void read(void *data, std::size_t size);

    QByteArray m_path;
    int m_socket;
};

/// A touch screen that covers the whole screen.
class TouchScreen : public InputTestDevice
{
public:
    TouchScreen();

    /// \a finger counts from 0, \a point is in pixels of the screen.
    void press(int finger, QPointF point);
    void move(int finger, QPointF point);
    void lift(int finger);
    /// Lifts the fingers that are still down.
    void liftAll();

private:
    void report(int finger, int kind, QPointF point);

    static constexpr int fingers = 5; // with-desktop
    bool m_isDown[fingers] = {};
    QPointF m_points[fingers];
};

/// A mouse whose wheel reports parts of a notch. It moves the pointer itself: what a wheel reports
/// first after another device has moved the pointer is lost on Qt, which takes it for the state to
/// start from.
class SmoothWheel : public InputTestDevice
{
public:
    SmoothWheel();

    /// In pixels of the screen.
    void moveTo(QPointF point);
    /// The left button.
    void press();
    void release();
    /// Parts of a notch; positive away from the user, which is up.
    void turn(double notches);

private:
    void reportButton(bool isDown);
};
