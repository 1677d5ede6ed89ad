// A message box shown, answered by an automation agent and disposed of,
// headless, against its floor: a port of the same size made, the same lines
// of text and button labels drawn into it, and freed (what any box does to
// be seen at all).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include <vitrail/automation.h>
#include <vitrail/draw.h>
#include <vitrail/msgbox.h>
#include <vitrail/platform.h>

namespace {

const char *kText = "Le patient est allergique \xE0 la p\xE9nicilline : voulez-vous vraiment "
                    "prescrire cette mol\xE9"
                    "cule ?";

void Answer(WindowRef w, void *) {
    vitrail_press_key(w, vitrail_key_return);
}

void ShowBox() {
    benchmark::DoNotOptimize(MessageBox(nullptr, kText, "Confirmation", 0x18));
}

void DrawFloor() {
    GrafPtr port = vitrail_port_new(540, 90);
    ch_font_set(port, "Lucida Grande", 0, 255, 13);
    vitrail_port_set_current(port);
    TextOut_0(port, 80, 14, kText, 52);
    TextOut_0(port, 80, 28, kText + 52, 40);
    TextOut_0(port, 400, 62, "Oui", 3);
    TextOut_0(port, 480, 62, "Non", 3);
    vitrail_port_dispose(port);
}

void BM_MessageBox(benchmark::State &state) {
    for (auto _ : state) ShowBox();
}

void BM_Floor(benchmark::State &state) {
    for (auto _ : state) DrawFloor();
}

BENCHMARK(BM_MessageBox)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Floor)->Unit(benchmark::kMicrosecond);

// Microseconds a call of `job`, over n calls.
double Time(void (*job)(), int n) {
    auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < n; ++i) job();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
               .count() /
           n;
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char **argv) {
    vitrail_set_agent(Answer, nullptr);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::vector<double> box, floor;
    for (int round = 0; round < 15; ++round) {
        box.push_back(Time(ShowBox, 100));
        floor.push_back(Time(DrawFloor, 100));
    }
    std::printf("message box: %.1f us a box (median of 15 interleaved rounds), floor %.1f us\n",
                Median(box), Median(floor));
    std::printf(
        "ratio\tMessageBox shown, answered, disposed / its text drawn in a bare port\t%.2f\t"
        "well under 1 ms a box (%.0f us)\n",
        Median(box) / Median(floor), Median(box));
}
