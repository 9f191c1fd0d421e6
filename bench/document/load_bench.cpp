// Opening a large project: 100 effects cycling through every registered
// kind, each with seeded random settings and objects.
#include <benchmark/benchmark.h>

#include "document/file.h"
#include "document/file_storage.h"
#include "document/random_fields.h"
#include "effects/effect.h"
#include "effects/register_effects.h"

namespace {

constexpr int kEffects = 100;

std::string LargeProject() {
    TeskRegisterEffects();
    TeskFile document;
    document.RemoveEffect(0, nullptr);
    document_test::RandomFieldVisitor random(2026);
    for (int i = 0; i < kEffects; ++i) {
        ZoAutoPtr<TeskEffect> effect;
        TeskEffect::Create(i % TeskEffect::GetCount(), effect);
        effect->GetState().VisitFields(random);
        document.InsertEffect(effect, i, nullptr);
    }
    return TeskDocumentToBytes(document);
}

void LoadHundredEffects(benchmark::State& state) {
    const std::string bytes = LargeProject();
    for (auto _ : state) {
        TeskFile document;
        TeskLoadDocumentFromBytes(document, bytes, "large.vmb");
        benchmark::DoNotOptimize(document.GetEffectCount());
    }
    state.counters["kinds"] = TeskEffect::GetCount();
    state.counters["bytes"] = static_cast<double>(bytes.size());
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes.size()));
}
BENCHMARK(LoadHundredEffects)->Unit(benchmark::kMillisecond);

}  // namespace
