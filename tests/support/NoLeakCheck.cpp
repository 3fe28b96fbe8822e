// Switches the checks for leaks of memory and threads off in host programs of the tests. Some of these end
// with live contexts or fork while threads run. One is privileged, where the check for memory cannot run.
// Other builds do not use this file.

extern "C" {

[[gnu::visibility("default")]] int __lsan_is_turned_off();
[[gnu::visibility("default")]] const char* __tsan_default_options();

int __lsan_is_turned_off() { return 1; }

const char* __tsan_default_options() { return "report_thread_leaks=0"; }
}
