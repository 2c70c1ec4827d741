// The watchdog over a connection. A driver may wait for its server without end, whatever timeout it was given; so every
// call runs on the connection's own thread, and the caller waits for it only as long as it may take. A call that does
// not come back is abandoned with its thread and its connection: when the server answers after all, they end by
// themselves. Therefore work owns everything it touches.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>

#include "database/odbc/OdbcSession.h"
#include "host/UserInterface.h"

namespace tolvan {

class OdbcWorker {
 public:
  explicit OdbcWorker(std::chrono::milliseconds grace);
  /// Closes the connection, or abandons it when that takes longer than the grace.
  ~OdbcWorker();
  OdbcWorker(const OdbcWorker&) = delete;
  OdbcWorker& operator=(const OdbcWorker&) = delete;

  /// Runs `work` and returns or throws what it does. Throws HostError Timeout after `limit` and the grace, and
  /// Interrupted when `interruption` (may be null) asks for it; the server was told to stop then. Afterwards, unless
  /// the work ended by itself, IsLost is true.
  template <class Result>
  Result Call(std::function<Result(OdbcSession&)> work, std::chrono::milliseconds limit,
              const Interruption* interruption) {
    const auto promise = std::make_shared<std::promise<Result>>();
    std::future<Result> answer = promise->get_future();
    Post([promise, work = std::move(work)](OdbcSession& session) {
      try {
        if constexpr (std::is_void_v<Result>) {
          work(session);
          promise->set_value();
        } else {
          promise->set_value(work(session));
        }
      } catch (...) {
        promise->set_exception(std::current_exception());
      }
    });
    WaitFor([&](std::chrono::milliseconds time) { return answer.wait_for(time) == std::future_status::ready; }, limit,
            interruption);
    return answer.get();
  }

  /// No further call is possible.
  bool IsLost() const { return lost_; }

 private:
  struct Core;
  using Work = std::function<void(OdbcSession&)>;
  using Ready = std::function<bool(std::chrono::milliseconds)>;

  static void Serve(const std::shared_ptr<Core>& core);
  void Post(Work work);
  void WaitFor(const Ready& ready, std::chrono::milliseconds limit, const Interruption* interruption);
  /// Tells the server to stop, and throws `cause` whether that ended the call or not.
  void Stop(const Ready& ready, const HostError& cause);

  std::chrono::milliseconds grace_;
  std::shared_ptr<Core> core_;
  bool lost_ = false;
};

}  // namespace tolvan
