// Makes malloc return null for requests that no machine can meet, as it does without a sanitizer.

extern "C" {
const char* __asan_default_options();
const char* __tsan_default_options();

__attribute__((visibility("default"))) const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

__attribute__((visibility("default"))) const char* __tsan_default_options() {
    return "allocator_may_return_null=1";
}
}
