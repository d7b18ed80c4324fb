#include "tests/sync/kill_at_statement.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace marovane {

namespace {

int statementsLeft = 0;

int CountStatement(unsigned /*event*/, void* /*context*/, void* /*statement*/, void* /*text*/) {
  if (--statementsLeft == 0) kill(getpid(), SIGKILL);
  return 0;
}

int Watch(sqlite3* connection, char** /*error*/, const void* /*api*/) {
  return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, CountStatement, nullptr);
}

}  // namespace

bool IsKilledAtStatement(int n, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    statementsLeft = n;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
    work();
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  if (WIFSIGNALED(status)) return WTERMSIG(status) == SIGKILL;
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  return false;
}

}  // namespace marovane
