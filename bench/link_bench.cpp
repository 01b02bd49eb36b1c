// Speed and memory of the link: decoding, applying and encoding in memory, and whole sessions
// over loopback against a device in another process.
#include "bench/traffic.h"
#include "link/decoders.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "platform/message_box.h"
#include "platform/socket.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

void Put32(Bytes& out, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
}
void Put16(Bytes& out, std::uint16_t v) {
    out.push_back(static_cast<std::uint8_t>(v));
    out.push_back(static_cast<std::uint8_t>(v >> 8));
}
void PutText(Bytes& out, const std::string& s) { out.insert(out.end(), s.begin(), s.end()); }

Bytes FrameHead(std::uint16_t type) {
    Bytes out = {0x48, 0xEF, 0xF0, 0x74, 0x72, 0xEF, 0xE6, 0x66, 0, 3, 0, 0, 1, 0, 1, 0};
    Put16(out, type);
    Put16(out, 0);
    return out;
}

// A number record with a label, template, range and decimals (70 bytes or so).
Bytes NumberRecord(std::uint32_t key) {
    Bytes body;
    Put16(body, 'N');
    Put32(body, 0x70000);
    Put32(body, key);
    Put32(body, 4);
    Put32(body, key * 3);
    const char letters[] = {'Z', 'f', 'n', 'x', 'd', 'm'};
    Put32(body, 6);
    body.insert(body.end(), letters, letters + 6);
    std::string label = "Channel " + std::to_string(key);
    Put32(body, static_cast<std::uint32_t>(label.size()));
    PutText(body, label);
    Put32(body, 4);
    PutText(body, "%n V");
    Put32(body, 4);
    Put32(body, 0);
    Put32(body, 4);
    Put32(body, 100000);
    Put32(body, 1);
    body.push_back(1);
    Put32(body, 1);
    body.push_back(0xFF);
    return body;
}

Bytes PanelPayload(std::uint32_t records) {
    Bytes out;
    Put32(out, records);
    for (std::uint32_t k = 1; k <= records; ++k) {
        Bytes body = NumberRecord(k);
        Put32(out, static_cast<std::uint32_t>(body.size()));
        out.insert(out.end(), body.begin(), body.end());
    }
    return out;
}

Bytes ValueItems(std::uint32_t items, std::uint32_t keys) {
    Bytes out;
    Put32(out, items);
    for (std::uint32_t i = 0; i < items; ++i) {
        Put32(out, 1 + i % keys);
        Put32(out, 4);
        Put32(out, i);
    }
    return out;
}

void Quiet() {
    plat::SetMessageBoxHook([](plat::WindowRef, const std::u16string&, const std::u16string&,
                               unsigned) { return 1; });
}

// Payload bytes as a worker's source.
DecodeStatus Decode(DecodeStatus (*decoder)(ReceiveSource&), const Bytes& payload) {
    MemoryInput input{payload.data(), payload.size()};
    ReceiveSource source = MemoryReceiveSource(&input);
    return decoder(source);
}

// An initialised link whose store holds that many number controls.
void StartWithPanel(std::uint32_t records) {
    Quiet();
    LinkInit();
    Decode(DecodePanel, PanelPayload(records));
}

void BM_DecodePanel1000Records(benchmark::State& state) {
    Quiet();
    LinkInit();
    Bytes payload = PanelPayload(1000);
    for (auto _ : state) {
        if (Decode(DecodePanel, payload) != DecodeStatus::kOk) state.SkipWithError("decode failed");
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * payload.size()));
    LinkShutdown();
}
BENCHMARK(BM_DecodePanel1000Records)->Unit(benchmark::kMicrosecond);

void BM_Apply10000ValueItems(benchmark::State& state) {
    StartWithPanel(100);
    Bytes items = ValueItems(10000, 100);
    for (auto _ : state) {
        if (Decode(DecodeValueUpdates, items) != DecodeStatus::kOk) state.SkipWithError("apply failed");
    }
    state.SetItemsProcessed(state.iterations() * 10000);
    LinkShutdown();
}
BENCHMARK(BM_Apply10000ValueItems)->Unit(benchmark::kMicrosecond);

void BM_EncodeValueMessage100Controls(benchmark::State& state) {
    StartWithPanel(100);
    plat::SocketHandle pair[2];
    plat::SocketPair(pair);
    Link().socket = pair[0];
    std::thread drain([&] {
        std::uint8_t sink[65536];
        while (plat::SocketReceive(pair[1], sink, sizeof sink) > 0) {
        }
    });
    for (auto _ : state) {
        {
            ControlsHold hold;
            for (auto& r : Controls().records) r.sendPending = 1;
        }
        if (LinkSendPendingValues() != 0) state.SkipWithError("send failed");
    }
    state.SetItemsProcessed(state.iterations() * 100);
    plat::SocketClose(pair[0]);
    drain.join();
    plat::SocketClose(pair[1]);
    Link().socket = plat::kInvalidSocket;
    LinkShutdown();
}
BENCHMARK(BM_EncodeValueMessage100Controls)->Unit(benchmark::kMicrosecond);

// The device pushes value messages at the link's ceiling (2 Mbit/s); the client handles each
// as the panel screen does. Reported: this process's CPU time per second of traffic.
void BM_LinkAtTwoMegabits(benchmark::State& state) {
    Quiet();
    const std::uint32_t items = static_cast<std::uint32_t>(state.range(0));
    Bytes frame = FrameHead(9);
    Bytes payload = ValueItems(items, items);
    frame.insert(frame.end(), payload.begin(), payload.end());
    TrafficResult total;
    for (auto _ : state) {
        TrafficResult r = RunTraffic([&](int fd) { PacedFrames(fd, frame, 250000.0, 3.0); });
        total.seconds += r.seconds;
        total.cpuSeconds += r.cpuSeconds;
        total.results += r.results;
        state.SetIterationTime(r.seconds);
    }
    state.counters["cpu_percent"] = 100.0 * total.cpuSeconds / total.seconds;
    state.counters["messages_per_s"] = static_cast<double>(total.results) / total.seconds;
    state.counters["frame_bytes"] = static_cast<double>(frame.size());
}
BENCHMARK(BM_LinkAtTwoMegabits)->Arg(1)->Arg(50)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

// A 100 MB file through the link: the peak resident size must hardly move.
void BM_FileTransfer100MB(benchmark::State& state) {
    Quiet();
    std::string folder = "/tmp/tremolanth-bench-" + std::to_string(::getpid());
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    const std::uint32_t size = 100u << 20;
    TrafficResult r;
    for (auto _ : state) {
        r = RunTraffic([&](int fd) {
            Bytes head = FrameHead(17);
            Put32(head, 1);  // key (no such control: the file is still written)
            Put32(head, 1);  // one file
            Put32(head, 8);
            PutText(head, std::string("big.bin\0", 8));
            Put32(head, size);
            WriteAll(fd, head.data(), head.size());
            Bytes chunk(1 << 16, 0x5A);
            for (std::uint32_t done = 0; done < size; done += static_cast<std::uint32_t>(chunk.size())) {
                WriteAll(fd, chunk.data(), chunk.size());
            }
        });
        state.SetIterationTime(r.seconds);
    }
    state.counters["peak_growth_kb"] = static_cast<double>(r.peakGrowthKb);
    state.counters["megabytes_per_s"] = 100.0 / r.seconds;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}
BENCHMARK(BM_FileTransfer100MB)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
