// Every worked example of the help, played in the real windows as its page says: the menu by its
// name, the options by mouse, the values by key, the label by mouse.
#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/general.h"
#include "core/help_numbers.h"
#include "output/format.h"
#include "support/example.h"
#include "ui/childwindow.h"
#include "ui/qttext.h"
#include "ui/window_fixture.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QTest>

namespace quorvanta {
namespace {

class HelpExampleInWindows : public WindowCheck,
                             public testing::WithParamInterface<checks::ExampleTopic> {
  protected:
    // The option of that caption, among those that can be seen; a failure and nothing if there is
    // none.
    QAbstractButton* Option(const std::string& caption) {
        for (QAbstractButton* button : Options().findChildren<QAbstractButton*>())
            if (button->isVisible() && StripAmpersand(FromQt(button->text())) == caption)
                return button;
        ADD_FAILURE() << "no option " << caption;
        return nullptr;
    }

    void Choose(const std::string& caption) {
        if (caption.empty())
            return;
        if (const QAbstractButton* button = Option(caption)) {
            // A box that starts ticked is left alone, as its user would.
            if (!button->isChecked())
                hands::Click(Options(), button->objectName());
            EXPECT_TRUE(button->isChecked()) << caption;
        }
    }

    // These boxes and no others; one may be ticked from the start.
    void Tick(const std::vector<std::string>& captions) {
        for (i16 i = 0; i < NoOfCheck; ++i) {
            const std::string caption = StripAmpersand(CheckLabel(CheckList(i)));
            const bool wanted = std::ranges::find(captions, caption) != captions.end();
            const QAbstractButton* box = Option(caption);
            ASSERT_NE(box, nullptr);
            if (box->isChecked() != wanted)
                hands::Click(Options(), box->objectName());
            EXPECT_EQ(box->isChecked(), wanted) << caption;
        }
    }

    void ChooseParameter(const std::string& caption) {
        auto& list = *hands::Control<QListWidget>(Options(), "lstParList");
        const auto found = list.findItems(ToQt(caption), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << caption;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(found.front()).center());
        hands::Settle();
    }

    void ChooseOptions(const help::Example& example) {
        Trigger("mnuFile(0)");
        Trigger(MenuName());
        if (!example.Parameter.empty())
            ChooseParameter(example.Parameter);
        Choose(example.Procedure);
        Choose(example.Samples);
        Choose(example.Tails);
        if (example.LeftTail)
            Choose("Reject in Left Tail");
        Tick(example.Ticked);
        for (const std::string& caption : example.Chosen)
            Choose(caption);
        hands::Click(Options(), "cmdOK");
    }

    // The row of a label in the window; a failure and -1 if it has none.
    int RowOf(const std::string& label) {
        for (int i = 0; i <= MaxPar; ++i) {
            const QString name = ControlName("cmdParLabel", i);
            if (hands::Control(Child(), name)->isVisible() &&
                StripAmpersand(FromQt(hands::TextOf(Child(), name))) == label)
                return i;
        }
        ADD_FAILURE() << "no label " << label;
        return -1;
    }

  private:
    // The entry of the menus that the example's number belongs to; its captions have to be those
    // that the page names.
    QString MenuName() {
        const HelpSubject subject = HelpSubjectOf(GetParam().Number);
        const MenuPath path = subject.IsTest == True ? PathToTest(subject.TestNo)
                                                     : PathToDistribution(subject.DistrNo);
        std::vector<std::string> captions;
        for (const MenuItem* item : path)
            captions.push_back(StripAmpersand(item->Caption));
        EXPECT_EQ(captions, GetParam().Example.Menus);
        return ControlName(ToQt(path.back()->Name), path.back()->Index);
    }
};

TEST_P(HelpExampleInWindows, SaysWhatTheWindowShows) {
    const help::Example& example = GetParam().Example;
    ChooseOptions(example);
    for (const help::ExampleStep& step : example.Steps) {
        for (const auto& [label, text] : step.Typed)
            hands::TypeInto(Child(), ControlName("txtParValue", RowOf(label)), ToQt(text));
        const int row = RowOf(step.Pressed);
        hands::Click(Child(), ControlName("cmdParLabel", row));
        checks::ExpectReading(step,
                              {FromQt(hands::TextOf(Child(), ControlName("txtParValue", row))),
                               ParValue(UnknownParNo), IsCountKind(ParKind(UnknownParNo))});
    }
    EXPECT_EQ(HelpExample(), GetParam().Number);
    EXPECT_EQ(Messages.Texts, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpExampleInWindows, testing::ValuesIn(checks::ReadExamples()),
                         [](const auto& info) { return std::to_string(info.param.Number); });

} // namespace
} // namespace quorvanta
