#pragma once

#include <chrono>
#include <map>
#include <span>
#include <string>
#include <vector>

/// Several runs of the window program, each in a process of its own, whose values are put together in a table.
namespace ml::bench {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start);

/// In a run: when its process was started.
Clock::time_point ProcessStart();
/// In a run: one value, whose name has no spaces.
void Report(const std::string& name, double value);
/// In a run: from now on the program is to end; how long that takes is reported as "exit".
void ReportQuit();
/// In a run: a row of /proc with kilobytes, in MiB.
double MemoryMiB(const std::string& row);

/// Name and values, one a report.
using Values = std::map<std::string, std::vector<double>>;

/// Settings and state of the runs lie in `folder` from now on.
void UseFolder(const std::string& folder);
/// Starts this program with `arguments`, waits for its end and adds its reports. Throws std::runtime_error if it fails.
void AddRun(const std::vector<std::string>& arguments, Values& all);

struct Row {
  const char *name, *text;
  double aim;  ///< 0: none
};
/// Median and worst of each row, and what missed its aim. Throws std::runtime_error for a row without values.
void PrintTable(std::span<const Row> rows, Values& all);

}  // namespace ml::bench
