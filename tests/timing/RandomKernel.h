#pragma once
// A small kernel of several processors that does things at random and writes the log of an ITRON
// kernel of it.

#include <random>
#include <string>
#include <vector>

namespace kvx::test {

class RandomKernel {
  public:
    // Tasks 1 to `tasks`, on processors 1 to `processors`.
    RandomKernel(unsigned seed, int tasks, int processors);

    // A log of so many steps.
    std::string Run(int steps);
    // Base priorities of the tasks, from 1; several may have the same.
    const std::vector<int>& Priorities() const { return priorities_; }

  private:
    enum class State { Dormant, Ready, Runs, Waits };
    struct Task {
        int id = 0;
        int priority = 0;
        int processor = 0;
        State state = State::Dormant;
        bool suspended = false;
        std::string call;    // that it is in
        std::string object;  // Waits: for which
        bool takes = false;  // Waits: to take it
        std::vector<std::string> held;
    };
    struct Object {
        int free = 0;
        std::vector<int> waiting;  // tasks, in order
    };
    struct Cpu {
        int running = 0;  // task; 0: idle
        std::vector<int> handlers;
        bool dispatches = false;  // a switch is due
    };

    int UpTo(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most + 1)); }
    bool OneIn(int n) { return UpTo(n - 1) == 0; }
    void Say(int processor, const std::string& message);
    void Enter(int processor, const std::string& call, const std::string& parameters);
    void Leave(int processor, const std::string& call, int ercd);
    Object& ObjectOf(const std::string& name) { return objects_[IndexOf(name)]; }
    std::size_t IndexOf(const std::string& name);

    void Step(int processor);
    void TaskStep(int processor, Task& task);
    void HandlerStep(int processor);
    void Take(int processor, Task& task, const std::string& call, const std::string& object,
              bool polls);
    void Give(int processor, const std::string& call, const std::string& object);
    void Block(int processor, Task& task, const std::string& call);
    void Wake(int processor, Task& task);
    void Start(int processor, const std::string& call, Task& target);
    void Suspend(int processor, Task& target);
    void Dispatch(int processor);
    bool Free(const Task& task) const { return task.state == State::Ready && !task.suspended; }

    std::mt19937 random_;
    std::vector<Task> tasks_;
    std::vector<int> priorities_;
    std::vector<Cpu> cpus_;
    std::vector<std::string> names_;
    std::vector<Object> objects_;
    const bool several_;
    long long time_ = 0;
    std::string log_;
};

}  // namespace kvx::test
