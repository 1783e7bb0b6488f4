#pragma once

#include <QDialog>
#include <QString>
#include <QVector>

class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

// The small dialog that asks for a new object's name and its size arguments in whole
// millimetres (and segment counts or degrees where the kind takes them).
class SceneAddObjectDialog : public QDialog
{
    Q_OBJECT

public:
    struct Field {
        QString label;
        int value = 1000;
        int minimum = 1;
        int maximum = 100000;
        QString suffix;         // "mm" by default
    };

    SceneAddObjectDialog(const QString &title, const QString &defaultName, const QVector<Field> &fields,
                         QWidget *parent = nullptr);

    // The lens a new projector or camera starts with.
    struct Lens {
        int width = 1920;
        int height = 1200;
        double throwRatio = 1.0;
        double shiftX = 0.0;   // percent of the image width
        double shiftY = 50.0;  // percent of the image height
    };
    // Adds the lens rows (resolution, throw ratio, lens shift) below the sizes.
    void addLensFields(const Lens &initial);
    bool hasLensFields() const { return m_lensWidth != nullptr; }
    Lens lens() const;
    QDoubleSpinBox *throwRatioBox() const { return m_throwRatio; }

    // An extra choice row above the sizes (the guide tab of a guide object).
    void setChoice(const QString &label, const QStringList &items, int current);
    int choice() const;

    QString name() const;
    QVector<int> values() const;
    int value(int i) const;
    QSpinBox *spinBox(int i) const { return m_spins.value(i); }

    // The size fields of a size argument, a thickness or radius, and a segment count.
    static Field size(const QString &label, int value);
    static Field radius(const QString &label, int value);
    static Field segments(const QString &label, int value);
    static Field degrees(const QString &label, int value, int minimum = 1, int maximum = 360);

private:
    QLineEdit *m_name = nullptr;
    class QComboBox *m_choice = nullptr;
    class QFormLayout *m_form = nullptr;
    QVector<QSpinBox *> m_spins;
    QSpinBox *m_lensWidth = nullptr;
    QSpinBox *m_lensHeight = nullptr;
    QDoubleSpinBox *m_throwRatio = nullptr;
    QDoubleSpinBox *m_shiftX = nullptr;
    QDoubleSpinBox *m_shiftY = nullptr;
};
