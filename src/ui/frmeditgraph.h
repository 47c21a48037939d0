// frmEditGraph: the texts, the limits and the type of a graph.
#pragma once

#include "core/checked_array.h"
#include "output/settings.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>
#include <string>

class QComboBox;
class QFormLayout;
class QLineEdit;

namespace quorvanta {

class TitleField;
class TypeFields;

class frmEditGraph : public QDialog {
    Q_OBJECT

  public:
    // Of the graph of the current analysis.
    explicit frmEditGraph(QWidget* parent);
    // Of any graph: what it has, and what takes what is entered, which answers false after a
    // message if it can't be taken.
    using Apply = std::function<bool(const GraphSettings&)>;
    frmEditGraph(const GraphSettings& settings, Apply apply, QWidget* parent);
    ~frmEditGraph() override;

    void cmdOK_Click();

  private:
    void TakeCurveStyles();
    using AxisTexts = FixedArray<std::string, 0, 3>; // label, minimum, maximum, tick
    using AxisFields = std::array<QLineEdit*, 4>;

    QWidget* MakeAxis(const QString& title, const QString& axis, const AxisTexts& texts,
                      const std::array<const char*, 4>& labels, AxisFields& fields);
    static AxisTexts TextsOf(const AxisFields& fields);

    Apply apply_;
    TitleField* txtTitle_;
    AxisFields xAxis_{};
    AxisFields yAxis_{};
    QLineEdit* txtZLabel_;
    QLineEdit* txtCurveWidth_;
    QComboBox* cbCurveStyles_;
    std::unique_ptr<TypeFields> type_;
};

} // namespace quorvanta
