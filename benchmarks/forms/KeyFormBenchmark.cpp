// How long a technician waits for the window in which a keyboard's key types are set.
#include <QAbstractButton>

#include "Workplace.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/forms/StripView.h"

namespace kelvora {

namespace {

void OpenKeyForm(benchmark::State& state)
{
    Workplace place;
    place.Open(1);
    ModuleButton& keyboard = place.window->ActiveSetup()->Strip().Button(StripButton::Master);
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        Stopwatch watch;
        const AfterPainting<frmKeyb> painted([&watch](frmKeyb& form) {
            watch.Stop();
            form.reject();
        });
        keyboard.click();
        times.Take(watch);
        Workplace::Settle();
    }
}
BENCHMARK(OpenKeyForm)->UseManualTime()->Unit(benchmark::kMillisecond);

class KeyForm {
public:
    KeyForm()
    {
        place_.OpenAnother();
        SetupSession& session = place_.window->ActiveSetup()->Session();
        session.HandOver(ModuleKind::KM096);
        form_ = std::make_unique<frmKeyb>(ModuleKind::KM096, place_.program.texts, session.settings.Xchange,
                                          session.settings.Name, place_.window.get());
        form_->show();
        Workplace::Settle();
    }

    frmKeyb* operator->() const { return form_.get(); }

    QAbstractButton& Button(const char* name) const
    {
        return *form_->findChild<QAbstractButton*>(QLatin1String(name));
    }

private:
    Workplace place_;
    std::unique_ptr<frmKeyb> form_;
};

void LayOutAgainOnResize(benchmark::State& state)
{
    const KeyForm form;
    const QSize small = form->size();
    const QSize large = small * 5 / 4;
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        const QSize other = form->size() == small ? large : small;
        Stopwatch watch;
        form->resize(other);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        watch.Stop();
        times.Take(watch);
        Workplace::Settle();
    }
}
BENCHMARK(LayOutAgainOnResize)->UseManualTime()->Unit(benchmark::kMillisecond);

void LayOutAgainOnKeyType(benchmark::State& state)
{
    const KeyForm form;
    form.Button("Keys51").click();
    const std::array types{&form.Button("KeyTypeOption3"), &form.Button("KeyTypeOption0")};
    std::size_t next = 0;
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        Stopwatch watch;
        types.at(next)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        watch.Stop();
        times.Take(watch);
        next = 1 - next;
        Workplace::Settle();
    }
}
BENCHMARK(LayOutAgainOnKeyType)->UseManualTime()->Unit(benchmark::kMillisecond);

void PaintKeyForm(benchmark::State& state)
{
    const KeyForm form;
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        Stopwatch watch;
        form->repaint();
        watch.Stop();
        times.Take(watch);
    }
}
BENCHMARK(PaintKeyForm)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kelvora
