#pragma once

#include "money/NativeBankImport.h"
#include "money/NativeBankRows.h"
#include "money/NativeBooksDashboard.h"
#include "money/NativeBooksExpenses.h"
#include "money/NativeBooksReport.h"
#include "money/NativeBooksTransactions.h"
#include "money/NativeBooksView.h"
#include "money/NativeDoneNotice.h"
#include "money/NativePaymentClientPanel.h"
#include "money/NativePaymentsView.h"
#include "money/NativeReconciliation.h"

#include <QtQml/qqml.h>

// The money screens' state objects as QML sees them; the window builds them.
struct NativeBooksViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksView)
    QML_NAMED_ELEMENT(NativeBooksView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeBooksDashboardForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksDashboard)
    QML_NAMED_ELEMENT(NativeBooksDashboard)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeBooksTransactionsForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksTransactions)
    QML_NAMED_ELEMENT(NativeBooksTransactions)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeBooksExpensesForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksExpenses)
    QML_NAMED_ELEMENT(NativeBooksExpenses)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeBooksReportForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksReport)
    QML_NAMED_ELEMENT(NativeBooksReport)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeBankRowsForeign {
    Q_GADGET
    QML_FOREIGN(NativeBankRows)
    QML_NAMED_ELEMENT(NativeBankRows)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeBankImportForeign {
    Q_GADGET
    QML_FOREIGN(NativeBankImport)
    QML_NAMED_ELEMENT(NativeBankImport)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativeReconciliationForeign {
    Q_GADGET
    QML_FOREIGN(NativeReconciliation)
    QML_NAMED_ELEMENT(NativeReconciliation)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativePaymentsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativePaymentsView)
    QML_NAMED_ELEMENT(NativePaymentsView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePaymentClientPanelForeign {
    Q_GADGET
    QML_FOREIGN(NativePaymentClientPanel)
    QML_NAMED_ELEMENT(NativePaymentClientPanel)
    QML_UNCREATABLE("Built by the payments view.")
};

struct NativeDoneNoticeForeign {
    Q_GADGET
    QML_FOREIGN(NativeDoneNotice)
    QML_NAMED_ELEMENT(NativeDoneNotice)
};

// The lists the views hand out, so that tooling knows their type.
struct QAbstractListModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractListModel)
    QML_ANONYMOUS
};
