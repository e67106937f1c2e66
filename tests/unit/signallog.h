// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qobject.h>
#include <QtCore/qvariant.h>

/// Records every signal that an object's own class declares, in the order of emission.
class SignalLog : public QObject
{ // clazy:exclude=missing-qobject-macro
public:
    struct Emission {
        QByteArray name;
        QVariantList arguments;
    };

    explicit SignalLog(const QObject *object)
    {
        const QMetaObject *meta = object->metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() != QMetaMethod::Signal)
                continue;
            QMetaObject::connect(object, i, this,
                QObject::staticMetaObject.methodCount() + int(m_signals.size()),
                Qt::DirectConnection);
            m_signals.append(meta->method(i));
        }
    }

    const QList<Emission> &emissions() const { return m_emissions; }

    QList<QByteArray> names() const
    {
        QList<QByteArray> names;
        for (const Emission &emission : m_emissions)
            names.append(emission.name);
        return names;
    }

    void clear() { m_emissions.clear(); }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod)
            return id;
        const QMetaMethod &signal = m_signals.at(id);
        Emission emission{signal.name(), {}};
        for (int i = 0; i < signal.parameterCount(); ++i)
            emission.arguments.append(QVariant(signal.parameterMetaType(i), arguments[i + 1]));
        m_emissions.append(emission);
        return -1;
    }

private:
    QList<QMetaMethod> m_signals;
    QList<Emission> m_emissions;
};
