// QueryInterface on an object with 20 registered extensions, against one look-up in a hash table.
#include "platform/component/QorExtension.h"
#include "platform/component/QorHandle.h"

#include <benchmark/benchmark.h>

#include <array>
#include <unordered_map>
#include <utility>

namespace {

constexpr std::size_t extensionCount = 20;

template <std::size_t Number>
class QorIBench : public QorInterface {
    QorDeclareInterface(QorIBench)
};

template <std::size_t Number>
class BenchExtension : public QorImplements<QorExtension, QorIBench<Number>> {
public:
    using QorImplements<QorExtension, QorIBench<Number>>::QorImplements;

protected:
    ~BenchExtension() override = default;
};

class BenchObject : public QorBaseUnknown {
    QorDeclareClass(BenchObject)

protected:
    ~BenchObject() override = default;
};

QorImplementClass(BenchObject, QorBaseUnknown)

using Ids = std::array<const QorInterfaceId*, extensionCount>;

template <std::size_t... Numbers>
Ids Register(std::index_sequence<Numbers...>) {
    (QorExtension::Register("BenchObject", QorIBench<Numbers>::ClassId(),
                            &QorCreateExtension<BenchExtension<Numbers>>),
     ...);
    return {&QorIBench<Numbers>::ClassId()...};
}

const Ids& Interfaces() {
    static const Ids ids = Register(std::make_index_sequence<extensionCount>());
    return ids;
}

void BM_HashLookUp(benchmark::State& ioState) {
    std::unordered_map<const QorInterfaceId*, void*> table;
    for (const QorInterfaceId* id : Interfaces())
        table.emplace(id, &table);
    std::size_t next = 0;
    for (auto _ : ioState) {
        benchmark::DoNotOptimize(table.find(Interfaces()[next])->second);
        next = (next + 1) % extensionCount;
    }
}

/// All extensions have been made; each is asked for in turn, so half the list is walked on average.
void BM_QueryInterface(benchmark::State& ioState) {
    const auto object = QorMake<BenchObject>();
    std::size_t next = 0;
    for (auto _ : ioState) {
        void* found = nullptr;
        benchmark::DoNotOptimize(object->QueryInterface(*Interfaces()[next], &found));
        object->Release();
        next = (next + 1) % extensionCount;
    }
}

void BM_QueryInterfaceInVain(benchmark::State& ioState) {
    const auto object = QorMake<BenchObject>();
    benchmark::DoNotOptimize(Interfaces());
    for (auto _ : ioState) {
        void* found = nullptr;
        benchmark::DoNotOptimize(
            object->QueryInterface(QorIBench<extensionCount>::ClassId(), &found));
    }
}

BENCHMARK(BM_HashLookUp);
BENCHMARK(BM_QueryInterface);
BENCHMARK(BM_QueryInterfaceInVain);

} // namespace
