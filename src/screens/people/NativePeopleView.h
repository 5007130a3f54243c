#pragma once

#include "screens/people/NativeHRView.h"
#include "screens/people/NativePayrollView.h"
#include "screens/people/NativeTimeClockView.h"

#include <QObject>

class TarnAPI;

// The people screen's state as the window holds it: one state object per
// section, each loading when its page appears, all forgotten on sign-out.
class NativePeopleView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeHRView *hr READ hr CONSTANT)
    Q_PROPERTY(NativeTimeClockView *timeClock READ timeClock CONSTANT)
    Q_PROPERTY(NativePayrollView *payroll READ payroll CONSTANT)

public:
    explicit NativePeopleView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeHRView *hr() const { return m_hr; }
    [[nodiscard]] NativeTimeClockView *timeClock() const { return m_timeClock; }
    [[nodiscard]] NativePayrollView *payroll() const { return m_payroll; }

    void clear();

private:
    NativeHRView *m_hr;
    NativeTimeClockView *m_timeClock;
    NativePayrollView *m_payroll;
};
