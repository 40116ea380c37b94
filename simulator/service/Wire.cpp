#include "simulator/service/Wire.h"

void Wire::Send(const catalog::Signal& signal, GVariant* tuple) {
  Fault fault;
  if (faults_.Strikes(Fault::On::kSignal, signal.name, &fault)) {
    const std::shared_ptr<GVariant> kept(g_variant_ref(tuple), g_variant_unref);
    if (fault.kind == Fault::Kind::kDrop) return;
    if (fault.kind == Fault::Kind::kDelay) {
      return delayed_.Start(fault.time, [this, &signal, kept] { Emit(signal, kept.get()); });
    }
    if (fault.kind == Fault::Kind::kReorder && !held_) {
      held_ = Waiting{&signal, kept};
      return;
    }
    if (fault.kind == Fault::Kind::kDouble) Emit(signal, tuple);
  }
  Emit(signal, tuple);
  Flush();
}

void Wire::Flush() {
  if (const auto held = std::exchange(held_, std::nullopt)) Emit(*held->signal, held->tuple.get());
}

void Wire::Emit(const catalog::Signal& signal, GVariant* tuple) {
  if (!service_.IsAudible()) return;
  for (const auto& listener : listeners_) listener(signal, tuple);
  service_.Send(signal, tuple);
}
