#pragma once

#include "screens/people/NativePayrollView.h"
#include "screens/people/NativeTimeClockView.h"

#include <QObject>

class TarnAPI;

// The people screen's state as the window holds it: one state object per
// section, each loading when its page appears, all forgotten on sign-out.
class NativePeopleView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeTimeClockView *timeClock READ timeClock CONSTANT)
    Q_PROPERTY(NativePayrollView *payroll READ payroll CONSTANT)

public:
    explicit NativePeopleView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeTimeClockView *timeClock() const { return m_timeClock; }
    [[nodiscard]] NativePayrollView *payroll() const { return m_payroll; }

    void clear();

private:
    NativeTimeClockView *m_timeClock;
    NativePayrollView *m_payroll;
};
