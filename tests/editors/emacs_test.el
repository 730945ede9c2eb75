;;; emacs_test.el --- Tests of editors/emacs  -*- lexical-binding: t; -*-

;;; Code:

(require 'ert)
(require 'subr-x)
(require 'kvrmem)

(defconst kvr-source (getenv "KVR_SOURCE"))
(setq kvrmem-program (getenv "KVRMEM"))

(ert-deftest a-file-gets-the-mode-of-its-contents ()
  (let ((folder (expand-file-name "tests/editors/languages/" kvr-source)))
    (with-temp-buffer
      (insert-file-contents (expand-file-name "expected" folder))
      (dolist (line (split-string (buffer-string) "\n" t))
        (pcase-let ((`(,name ,language) (split-string line)))
          (with-current-buffer (find-file-noselect (expand-file-name name folder))
            (should (equal (cons name (if (derived-mode-p 'kvr-mode)
                                          (string-remove-suffix "-mode" (symbol-name major-mode))
                                        "none"))
                           (cons name language)))
            (kill-buffer)))))))

(ert-deftest a-new-file-gets-the-mode-of-its-extension ()
  (should (eq (kvrmem-mode-for "MIF" "") 'kvr-mif-mode))
  (should (eq (kvrmem-mode-for "mem" "\n") 'kvr-readmem-mode))
  (should-not (kvrmem-mode-for "txt" ""))
  (should-not (kvrmem-mode-for nil "WIDTH=8;\n")))

(defun faces-of (mode text)
  "Each stretch of TEXT that has one face in MODE, with the face."
  (with-temp-buffer
    (insert text)
    (funcall mode)
    (font-lock-ensure)
    (goto-char (point-min))
    (let (found)
      (while (not (eobp))
        (let ((end (next-single-property-change (point) 'face nil (point-max)))
              (face (get-text-property (point) 'face)))
          (when face
            (push (cons (buffer-substring-no-properties (point) end) face) found))
          (goto-char end)))
      (nreverse found))))

(defconst comment 'font-lock-comment-face)
(defconst word 'font-lock-constant-face)
(defconst address 'font-lock-function-name-face)
(defconst keyword 'font-lock-keyword-face)
(defconst type 'font-lock-type-face)
(defconst special 'font-lock-builtin-face)
(defconst fault 'font-lock-warning-face)

(ert-deftest mif-is-highlighted ()
  (should (equal (faces-of 'kvr-mif-mode (concat "WIDTH = 8; % bits\ndata_radix=HEX; -- WIDTH\n"
                                                 "[4..F] : 1X -2; // no\n10 : DEC; END"))
                 `(("WIDTH" . ,keyword) ("8" . ,word) ("% bits" . ,comment)
                   ("data_radix" . ,keyword) ("HEX" . ,type) ("-- WIDTH" . ,comment)
                   ("4" . ,address) ("F" . ,address) ("1" . ,word) ("X" . ,special) ("-2" . ,word) ("// no" . ,fault)
                   ("10" . ,address) ("DEC" . ,word) ("END" . ,keyword)))))

(ert-deftest records-are-highlighted ()
  (should (equal (faces-of 'kvr-hex-mode ":0400100012345678D8\nnote\n:00000006FA")
                 `(("04" . ,type) ("0010" . ,address) ("00" . ,keyword) ("12345678" . ,word) ("D8" . ,special)
                   ("note" . ,comment) (":00000006FA" . ,fault))))
  (should (equal (faces-of 'kvr-srec-mode "S20800010001020304EC\ns1030001FB\nnote")
                 `(("S2" . ,keyword) ("08" . ,type) ("000100" . ,address) ("01020304" . ,word) ("EC" . ,special)
                   ("s1030001FB" . ,fault) ("note" . ,comment)))))

(ert-deftest lists-are-highlighted ()
  (should (equal (faces-of 'kvr-readmem-mode "@40 1_2 z /* 11\n 22 */ 33, // 44")
                 `(("@40" . ,address) ("1_2" . ,word) ("z" . ,special) ("/* 11\n 22 */" . ,comment) ("33" . ,word)
                   ("," . ,fault) ("// " . font-lock-comment-delimiter-face) ("44" . ,comment))))
  (should (equal (faces-of 'kvr-rif-mode "@10\n0x # no\n@1 2")
                 `(("@10" . ,address) ("0" . ,word) ("x" . ,special) ("# no" . ,fault) ("@1 2" . ,fault))))
  (should (equal (faces-of 'kvr-titxt-mode "@F0\n31 4f\nq")
                 `(("@F0" . ,address) ("31" . ,word) ("4f" . ,word) ("q" . ,keyword)))))

(ert-deftest files-with-settings-are-highlighted ()
  (should (equal (faces-of 'kvr-coe-mode "; gains\nmemory_initialization_radix=16; ; text\n10,\n")
                 `(("; gains" . ,comment) ("memory_initialization_radix" . ,keyword) ("16" . ,word)
                   ("; text" . ,comment) ("10" . ,word))))
  (should (equal (faces-of 'kvr-memheader-mode "#Format=AddrHex\n#Colour=1\n#Data\n0:10\n")
                 `(("#Format" . ,keyword) ("AddrHex" . ,type) ("#Colour=1" . ,fault) ("#Data" . ,keyword)
                   ("0" . ,address) ("10" . ,word))))
  (should (equal (faces-of 'kvr-logisim-mode "v2.0 raw\n4*FF # text\n")
                 `(("v2.0 raw" . ,keyword) ("4" . ,type) ("FF" . ,word) ("# text" . ,comment)))))

(ert-deftest flymake-shows-what-the-tool-reports ()
  (let ((file (make-temp-file "careless" nil ".mif" (concat "WIDTH=8;\nDEPTH=3;\nCONTENT BEGIN\n"
                                                            "0 : 1FF;\n1 : 0; 2 : 1;\nEND;\nrest\n")))
        (result 'none))
    (unwind-protect
        (with-current-buffer (find-file-noselect file)
          (kvrmem-flymake (lambda (diagnostics) (setq result diagnostics)))
          (with-timeout (20) (while (eq result 'none) (accept-process-output nil 0.05)))
          (should (equal (mapcar (lambda (each)
                                   (list (line-number-at-pos (flymake-diagnostic-beg each))
                                         (flymake-diagnostic-type each)
                                         (flymake-diagnostic-text each)))
                                 result)
                         '((4 :error "value 1FF needs 9 bits, the words have 8\nneeds WIDTH 9")
                           (5 :error "'2' begins a statement on the line of another
the library kvr reads it as more values; give it a line of its own")
                           (7 :warning "'rest' follows END\nmake it a comment")))))
      (delete-file file))))

(defvar eglot-server-programs nil)

(ert-deftest eglot-starts-the-server-with-the-options ()
  (provide 'eglot)
  (let ((kvrmem-options '("--width" "12")))
    (should (equal (funcall (cdr (assq 'kvr-mode eglot-server-programs)))
                   (list kvrmem-program "lsp" "--width" "12")))))

;;; emacs_test.el ends here
