#include "scene/ui/SceneAddObjectDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

SceneAddObjectDialog::SceneAddObjectDialog(const QString &title, const QString &defaultName,
                                           const QVector<Field> &fields, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("vantreoAddObjectDialog"));
    setWindowTitle(title);
    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    m_form = form;
    m_name = new QLineEdit(this);
    m_name->setPlaceholderText(defaultName);
    form->addRow(tr("Name"), m_name);
    for (const Field &field : fields) {
        auto *spin = new QSpinBox(this);
        spin->setRange(field.minimum, field.maximum);
        spin->setValue(field.value);
        spin->setSuffix(field.suffix.isEmpty() ? QString() : QLatin1Char(' ') + field.suffix);
        spin->setAccelerated(true);
        spin->setSingleStep(field.suffix == QLatin1String("mm") ? 10 : 1);
        form->addRow(field.label, spin);
        m_spins.append(spin);
    }
    layout->addLayout(form);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    if (!m_spins.isEmpty()) {
        m_spins.first()->setFocus();
        m_spins.first()->selectAll();
    }
}

void SceneAddObjectDialog::addLensFields(const Lens &initial)
{
    if (m_lensWidth)
        return;
    auto pixels = [this](int value) {
        auto *spin = new QSpinBox(this);
        spin->setRange(1, 16384);
        spin->setValue(value);
        spin->setSuffix(tr(" px"));
        return spin;
    };
    auto real = [this](double minimum, double maximum, int decimals, double value, const QString &suffix) {
        auto *spin = new QDoubleSpinBox(this);
        spin->setRange(minimum, maximum);
        spin->setDecimals(decimals);
        spin->setValue(value);
        spin->setSingleStep(decimals > 1 ? 0.01 : 1.0);
        if (!suffix.isEmpty())
            spin->setSuffix(suffix);
        return spin;
    };
    m_lensWidth = pixels(initial.width);
    m_lensHeight = pixels(initial.height);
    m_throwRatio = real(0.1, 10.0, 3, initial.throwRatio, QString());
    m_shiftX = real(-100.0, 100.0, 1, initial.shiftX, QStringLiteral(" %"));
    m_shiftY = real(-100.0, 100.0, 1, initial.shiftY, QStringLiteral(" %"));
    m_form->addRow(tr("Resolution width"), m_lensWidth);
    m_form->addRow(tr("Resolution height"), m_lensHeight);
    m_form->addRow(tr("Throw ratio"), m_throwRatio);
    m_form->addRow(tr("Lens shift X"), m_shiftX);
    m_form->addRow(tr("Lens shift Y"), m_shiftY);
}

SceneAddObjectDialog::Lens SceneAddObjectDialog::lens() const
{
    Lens result;
    if (!m_lensWidth)
        return result;
    result.width = m_lensWidth->value();
    result.height = m_lensHeight->value();
    result.throwRatio = m_throwRatio->value();
    result.shiftX = m_shiftX->value();
    result.shiftY = m_shiftY->value();
    return result;
}

void SceneAddObjectDialog::setChoice(const QString &label, const QStringList &items, int current)
{
    if (!m_choice) {
        m_choice = new QComboBox(this);
        m_form->insertRow(1, label, m_choice);
    }
    m_choice->clear();
    m_choice->addItems(items);
    m_choice->setCurrentIndex(current);
}

int SceneAddObjectDialog::choice() const
{
    return m_choice ? m_choice->currentIndex() : -1;
}

QString SceneAddObjectDialog::name() const
{
    return m_name->text().trimmed();
}

QVector<int> SceneAddObjectDialog::values() const
{
    QVector<int> result;
    for (QSpinBox *spin : m_spins)
        result.append(spin->value());
    return result;
}

int SceneAddObjectDialog::value(int i) const
{
    return i >= 0 && i < m_spins.size() ? m_spins[i]->value() : 0;
}

SceneAddObjectDialog::Field SceneAddObjectDialog::size(const QString &label, int value)
{
    return {label, value, 1, 100000, QStringLiteral("mm")};
}

SceneAddObjectDialog::Field SceneAddObjectDialog::radius(const QString &label, int value)
{
    return {label, value, 0, 100000, QStringLiteral("mm")};
}

SceneAddObjectDialog::Field SceneAddObjectDialog::segments(const QString &label, int value)
{
    return {label, value, 0, 512, QString()};
}

SceneAddObjectDialog::Field SceneAddObjectDialog::degrees(const QString &label, int value, int minimum, int maximum)
{
    return {label, value, minimum, maximum, QStringLiteral("°")};
}
