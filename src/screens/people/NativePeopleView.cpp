#include "screens/people/NativePeopleView.h"

NativePeopleView::NativePeopleView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_hr(new NativeHRView(api, this))
    , m_timeClock(new NativeTimeClockView(api, this))
    , m_payroll(new NativePayrollView(api, this))
{
}

void NativePeopleView::clear()
{
    m_hr->clear();
    m_timeClock->clear();
    m_payroll->clear();
}
