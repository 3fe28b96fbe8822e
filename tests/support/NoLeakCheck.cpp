// Switches the leak check off in host programs of the tests. Some end with live contexts or fork while
// threads run; one is privileged, and the check does not run there. Other builds do not use it.

extern "C" {

[[gnu::visibility("default")]] int __lsan_is_turned_off();

int __lsan_is_turned_off() { return 1; }
}
