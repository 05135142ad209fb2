// Work in processes of their own, which may be killed.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "platform/error.h"

namespace QuorHost::Testing {

/// Runs `work` in another process; what it raises is printed. It ends with 0 when `work` gave true.
template <class Work>
pid_t inAnotherProcess(Work&& work) {
  const pid_t child = fork();
  if (child != 0) return child;
  int status = 1;
  try {
    status = work() ? 0 : 2;
  } catch (const QuorDataLib::Error& error) {
    std::fprintf(stderr, "%s\n", error.description().c_str());
  }
  _exit(status);
}

/// The status with which the process ended: 0 when all went well.
inline int statusOf(pid_t child) {
  int status = -1;
  return waitpid(child, &status, 0) == child ? status : -1;
}

/// Runs `work` again and again in another process, with the number of the turn, and kills it some
/// time after the first turn. Gives the number of the last turn that had come to its end.
template <class Work>
int turnsUntilKilled(int milliseconds, Work&& work) {
  int ends[2];
  if (pipe(ends) != 0) return 0;
  const pid_t child = inAnotherProcess([&] {
    for (int turn = 1;; ++turn) {
      work(turn);
      if (write(ends[1], &turn, sizeof turn) != sizeof turn) return false;
    }
  });
  close(ends[1]);
  int last = 0;
  int turn = 0;
  if (read(ends[0], &turn, sizeof turn) == sizeof turn) {
    last = turn;
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
    kill(child, SIGKILL);
  }
  waitpid(child, nullptr, 0);
  while (read(ends[0], &turn, sizeof turn) == sizeof turn) last = turn;
  close(ends[0]);
  return last;
}

}  // namespace QuorHost::Testing
