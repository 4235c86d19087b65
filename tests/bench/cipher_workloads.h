// The cipher engine's benchmark workloads, each paired with the same work done by calling
// OpenSSL directly, so a run can print the engine's speed as a ratio of OpenSSL's.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

struct Workload {
  std::string name;           // e.g. "AES-256 encrypt"
  std::string referenceName;  // what the reference calls, e.g. "OpenSSL EVP"
  size_t bytesPerRun;         // 0: timed per run (key derivation), not per byte
  std::function<void()> ours;
  std::function<void()> reference;
};

// 1 MiB of independently chained 4096-byte units per run, for every algorithm and key
// length, both directions; then one 2048-iteration key derivation.
std::vector<Workload> MakeCipherWorkloads();

// Seconds per run of each side of a workload, as measured by a driver.
struct Measurement {
  const Workload* workload;
  double oursSeconds;
  double referenceSeconds;
};

// Prints MB/s (or milliseconds per run) of both sides and ours / reference.
void PrintRatioTable(const std::vector<Measurement>& measurements);
