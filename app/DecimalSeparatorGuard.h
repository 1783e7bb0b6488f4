#pragma once

#include <QObject>

// Number fields read what a user means: a comma or a full stop typed into a decimal field
// becomes that field's decimal point, a whole-number field drops the fraction typed after
// one, and digit grouping is refused everywhere, so "1,5" is one and a half (or 1 in a
// whole-number field), never fifteen. Installed once
// on the application, before the windows are built.
class DecimalSeparatorGuard : public QObject
{
    Q_OBJECT
public:
    explicit DecimalSeparatorGuard(QObject *parent = nullptr);

    static void install();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
