" Ends a test: writes the failures to $KVR_FAILURES.
call writefile(v:errors, $KVR_FAILURES)
if !empty(v:errors)
  cquit
endif
qall!
