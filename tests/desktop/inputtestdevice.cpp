// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/inputtestdevice.h"

#include <QtCore/qlogging.h>
#include <QtCore/qtenvironmentvariables.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <cerrno>
#include <cstring>

#include <X11/extensions/XI2.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xorg/xf86-input-inputtest-protocol.h>

namespace
{

// Of the driver's absolute axes: from 0 to 65535, both included.
constexpr double axisSteps = 65536;
// Of the driver's scrolling axes, for one notch.
constexpr double scrollIncrement = 120;
constexpr int verticalScroll = 3; // the number of the axis

template <typename Event> Event eventOf(xf86ITEventType type)
{
    Event event = {};
    event.header = {uint32_t(sizeof event), type};
    return event;
}

void setValuator(xf86ITValuatorData &data, int axis, double value)
{
    data.mask[axis / 8] |= uint8_t(1 << (axis % 8));
    data.valuators[axis] = value;
}

// A point in pixels of the screen. The server tells of places in 65536ths of a pixel and cuts what
// is beyond; half of one more keeps a whole pixel whole.
void setPoint(xf86ITValuatorData &data, QPointF point)
{
    const auto axisValue = [](double pixels, int screenSide) {
        return (pixels + 0.5 / 65536) * axisSteps / screenSide;
    };
    const QSize screen = QGuiApplication::primaryScreen()->virtualSize();
    setValuator(data, 0, axisValue(point.x(), screen.width()));
    setValuator(data, 1, axisValue(point.y(), screen.height()));
}

} // namespace

InputTestDevice::InputTestDevice(const char *variable)
    : m_path(qgetenv(variable))
    , m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (m_path.isEmpty() || size_t(m_path.size()) >= sizeof address.sun_path)
        qFatal("%s names no device: run this with VESPER_SERVER=xorg", variable);
    std::memcpy(address.sun_path, m_path.constData(), size_t(m_path.size()));
    if (m_socket < 0
        || connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        qFatal("cannot connect to the device %s: %s", m_path.constData(), strerror(errno));
    greet();
}

InputTestDevice::~InputTestDevice() { close(m_socket); }

void InputTestDevice::greet()
{
    auto version = eventOf<xf86ITEventClientVersion>(XF86IT_EVENT_CLIENT_VERSION);
    version.major = XF86IT_PROTOCOL_VERSION_MAJOR;
    version.minor = XF86IT_PROTOCOL_VERSION_MINOR;
    write(&version, sizeof version);
    xf86ITResponseServerVersion answer = {};
    read(&answer, sizeof answer);
    if (answer.header.type != XF86IT_RESPONSE_SERVER_VERSION)
        qFatal("the device %s speaks another protocol", m_path.constData());
}

void InputTestDevice::waitForServer()
{
    const auto event = eventOf<xf86ITEventWaitForSync>(XF86IT_EVENT_WAIT_FOR_SYNC);
    write(&event, sizeof event);
    xf86ITResponseSyncFinished answer = {};
    read(&answer, sizeof answer);
    if (answer.header.type != XF86IT_RESPONSE_SYNC_FINISHED)
        qFatal("the device %s does not answer", m_path.constData());
}

void InputTestDevice::write(const void *data, std::size_t size)
{
    if (::send(m_socket, data, size, MSG_NOSIGNAL) != ssize_t(size))
        qFatal("the device %s takes no input: %s", m_path.constData(), strerror(errno));
}

void InputTestDevice::read(void *data, std::size_t size)
{
    if (recv(m_socket, data, size, MSG_WAITALL) != ssize_t(size))
        qFatal("the device %s does not answer: %s", m_path.constData(), strerror(errno));
}

TouchScreen::TouchScreen()
    : InputTestDevice("VESPER_TOUCH_SOCKET")
{
}

void TouchScreen::press(int finger, QPointF point)
{
    m_isDown[finger] = true;
    report(finger, XI_TouchBegin, point);
}

void TouchScreen::move(int finger, QPointF point) { report(finger, XI_TouchUpdate, point); }

void TouchScreen::lift(int finger)
{
    m_isDown[finger] = false;
    report(finger, XI_TouchEnd, m_points[finger]);
}

void TouchScreen::liftAll()
{
    for (int finger = 0; finger < fingers; ++finger) {
        if (m_isDown[finger])
            lift(finger);
    }
}

void TouchScreen::report(int finger, int kind, QPointF point)
{
    m_points[finger] = point;
    auto event = eventOf<xf86ITEventTouch>(XF86IT_EVENT_TOUCH);
    event.touchid = uint32_t(finger);
    event.touch_type = uint32_t(kind);
    setPoint(event.valuators, point);
    send(event);
}

SmoothWheel::SmoothWheel()
    : InputTestDevice("VESPER_WHEEL_SOCKET")
{
}

void SmoothWheel::moveTo(QPointF point)
{
    auto event = eventOf<xf86ITEventMotion>(XF86IT_EVENT_MOTION);
    event.is_absolute = 1;
    setPoint(event.valuators, point);
    send(event);
}

void SmoothWheel::press() { reportButton(true); }

void SmoothWheel::release() { reportButton(false); }

void SmoothWheel::reportButton(bool isDown)
{
    auto event = eventOf<xf86ITEventButton>(XF86IT_EVENT_BUTTON);
    event.button = 1;
    event.is_press = isDown;
    send(event);
}

void SmoothWheel::turn(double notches)
{
    auto event = eventOf<xf86ITEventMotion>(XF86IT_EVENT_MOTION);
    event.is_absolute = 0;
    setValuator(event.valuators, verticalScroll, -notches * scrollIncrement); // the axis goes down
    send(event);
}
