;;; kvrmem.el --- Memory initialization files  -*- lexical-binding: t; -*-

;; Package-Requires: ((emacs "27.1"))
;; Keywords: languages, hardware

;;; Commentary:

;; Modes for memory initialization files: MIF, Intel HEX, RIF, COE, lists of words for $readmemh and $readmemb,
;; S-records, TI-TXT, Logisim files, and MEM with header.  The contents of a file determine its mode; a file of
;; other software gets none, because other programs use extensions such as .mif as well.  Flymake shows the
;; diagnostics of kvrmem; Eglot can start its language server.
;;
;;     (add-to-list 'load-path "/usr/share/kvr/emacs")
;;     (require 'kvrmem)
;;     (add-hook 'kvr-mode-hook #'flymake-mode)

;;; Code:

(require 'flymake)

(defgroup kvrmem nil
  "Memory initialization files."
  :group 'languages)

(defcustom kvrmem-program "kvrmem"
  "The tool: a name that is looked for in the path, or a path."
  :type 'string)

(defcustom kvrmem-options nil
  "Options for what files leave open, such as (\"--width\" \"32\")."
  :type '(repeat string))

;;; The mode of a file.

(defconst kvrmem-modes-of-extension
  '(("mif" kvr-mif-mode)
    ("hex" kvr-hex-mode kvr-readmem-mode)
    ("ihex" kvr-hex-mode)
    ("ihx" kvr-hex-mode)
    ("rif" kvr-rif-mode)
    ("mem" kvr-readmem-mode kvr-memheader-mode)
    ("vmem" kvr-readmem-mode)
    ("dat" kvr-readmem-mode)
    ("txt" kvr-titxt-mode kvr-readmem-mode)
    ("coe" kvr-coe-mode)
    ("srec" kvr-srec-mode)
    ("s19" kvr-srec-mode)
    ("s28" kvr-srec-mode)
    ("s37" kvr-srec-mode)
    ("mot" kvr-srec-mode))
  "The modes that a file with an extension may get.
The first whose contents they are counts.")

(defconst kvrmem-open-extensions '("dat" "txt")
  "Extensions of nearly everything.
A new file gets no mode there, nor do bare numbers without address or comment.")

(defconst kvrmem-signs
  `((kvr-mif-mode
     . ,(concat "^[ \t]*\\(?:\\(?:WIDTH\\|DEPTH\\|ADDRESS_RADIX\\|DATA_RADIX\\)[ \t]*="
                "\\|CONTENT\\(?:[ \t]+BEGIN\\)?[ \t\r]*$"
                "\\|\\(?:[[:xdigit:]]+\\|\\[[ \t]*[[:xdigit:]]+[ \t]*\\.\\.[ \t]*[[:xdigit:]]+[ \t]*\\]\\)"
                "[ \t]*:[ \t]*[-[:xdigit:]X][-[:xdigit:]X \t]*;\\)"))
    (kvr-hex-mode . "^[ \t]*:[ \t]*[[:xdigit:]]\\{2\\}[ \t]*[[:xdigit:]]\\{4\\}[ \t]*0[0-5]")
    (kvr-srec-mode . "^[ \t]*S[0-35-9][[:xdigit:]]\\{6,\\}[ \t\r]*$")
    (kvr-coe-mode . "^[ \t]*memory_initialization_\\(?:radix\\|vector\\)[ \t]*=")
    (kvr-memheader-mode . "^#Format[ \t]*="))
  "A line that only a file of the mode has.")

(defconst kvrmem-words
  '((kvr-rif-mode . "\\`\\(?:@[[:xdigit:]]+\\|[[:xdigit:]X]+\\)\\'")
    (kvr-readmem-mode . "\\`\\(?:@[[:xdigit:]]+\\|[[:xdigit:]XZ][[:xdigit:]XZ_]*\\)\\'")
    (kvr-titxt-mode . "\\`\\(?:@[[:xdigit:]]+\\|[[:xdigit:]]\\{2\\}\\|q\\)\\'"))
  "What each word of a list may be.")

(defconst kvrmem-head-lines 200
  "How many lines are looked at, beside the last one.")

(defun kvrmem--without-comments (text)
  "TEXT of a list of words with a blank for each comment."
  (with-temp-buffer
    (insert text)
    (goto-char (point-min))
    (while (re-search-forward "/[/*]" nil t)
      (let ((begin (match-beginning 0)))
        (if (eq (char-before) ?/)
            (end-of-line)
          (unless (search-forward "*/" nil t)
            (goto-char (point-max))))
        (delete-region begin (point))
        (insert " ")))
    (buffer-string)))

(defun kvrmem--list-p (mode extension text)
  "Non-nil if TEXT of a file with EXTENSION is a list of words of MODE."
  (let* ((rest (if (eq mode 'kvr-readmem-mode) (kvrmem--without-comments text) text))
         (words (split-string rest "[ \t\r\n\f]+" t))
         (pattern (alist-get mode kvrmem-words)))
    (and words
         (not (catch 'other
                (dolist (word words)
                  (unless (string-match-p pattern word)
                    (throw 'other t)))))
         (if (eq mode 'kvr-titxt-mode)
             (and (string-prefix-p "@" (car words)) (string-equal (downcase (car (last words))) "q"))
           (or (not (member extension kvrmem-open-extensions))
               (not (string-equal rest text))
               (string-match-p "@" rest))))))

(defun kvrmem-mode-for (extension text)
  "The mode of a file with EXTENSION and TEXT, or nil for other software."
  (let* ((case-fold-search t)
         (key (downcase (or extension "")))
         (modes (cdr (assoc key kvrmem-modes-of-extension))))
    (cond
     ((let ((case-fold-search nil)) (string-match-p "\\`\\(?:v2\\.0 raw\\|v3\\.0 hex \\)" text)) 'kvr-logisim-mode)
     ((not (string-match-p "[^ \t\r\n]" text)) (unless (member key kvrmem-open-extensions) (car modes)))
     (t (catch 'found
          (dolist (mode modes)
            (let ((sign (alist-get mode kvrmem-signs))
                  (case-fold-search (not (eq mode 'kvr-srec-mode))))
              (when (if sign (string-match-p sign text) (kvrmem--list-p mode key text))
                (throw 'found mode)))))))))

(defun kvrmem--head ()
  "The lines of the buffer that say which mode it gets."
  (save-excursion
    (goto-char (point-min))
    (forward-line kvrmem-head-lines)
    (let ((head (buffer-substring-no-properties (point-min) (point))))
      (if (eobp)
          head
        (goto-char (point-max))
        (skip-chars-backward " \t\r\n")
        (concat head (buffer-substring-no-properties (line-beginning-position) (point)))))))

(defun kvrmem--wanted-p ()
  "Non-nil if the contents of the buffer are those of a memory file."
  (and buffer-file-name (kvrmem-mode-for (file-name-extension buffer-file-name) (kvrmem--head)) t))

;;;###autoload
(defun kvrmem-mode ()
  "Switch to the mode of the memory file in the buffer."
  (interactive)
  (let ((mode (and buffer-file-name (kvrmem-mode-for (file-name-extension buffer-file-name) (kvrmem--head)))))
    (funcall (or mode #'fundamental-mode))))

;;;###autoload
(add-to-list 'magic-mode-alist '(kvrmem--wanted-p . kvrmem-mode))

;;; The modes.

(defvar kvr-mode-syntax-table
  (let ((table (make-syntax-table)))
    (dolist (character (string-to-list "=*-+/&|<>"))
      (modify-syntax-entry character "." table))
    table)
  "Only letters, digits and \"_\" belong to words.")

(defvar kvr-readmem-mode-syntax-table
  (let ((table (make-syntax-table)))
    (modify-syntax-entry ?/ ". 124" table)
    (modify-syntax-entry ?* ". 23b" table)
    (modify-syntax-entry ?\n ">" table)
    table)
  "Comments begin with // or stand between /* and */.")

(defconst kvrmem-keywords
  `((kvr-mif-mode
     ("--.*" . font-lock-comment-face)
     ("%[^%\n]*\\(?:%\\|$\\)" . font-lock-comment-face)
     ("\\(?://\\|#\\).*" . font-lock-warning-face)
     ("\\_<\\(WIDTH\\|DEPTH\\)[ \t]*=[ \t]*\\([0-9]*\\)" (1 font-lock-keyword-face) (2 font-lock-constant-face))
     (,(concat "\\_<\\(ADDRESS_RADIX\\|DATA_RADIX\\)[ \t]*=[ \t]*\\(?:"
               "\\(BIN\\|BINARY\\|OCT\\|OCTAL\\|DEC\\|DECIMAL\\|UNS\\|UNSIGNED\\|UNSIGNED_DEC\\|HEX\\|HEXADECIMAL\\)"
               "\\_>\\)?")
      (1 font-lock-keyword-face) (2 font-lock-type-face nil t))
     ("\\_<\\(?:CONTENT\\|BEGIN\\|END\\)\\_>" . font-lock-keyword-face)
     ("\\[[ \t]*\\([[:xdigit:]]+\\)[ \t]*\\.\\.[ \t]*\\([[:xdigit:]]+\\)[ \t]*\\]"
      (1 font-lock-function-name-face) (2 font-lock-function-name-face))
     ("\\_<\\([[:xdigit:]]+\\)[ \t]*:" 1 font-lock-function-name-face)
     ("X" . font-lock-builtin-face)
     ("-?\\<[[:xdigit:]]+" . font-lock-constant-face))
    (kvr-hex-mode
     (,(concat "^[ \t]*:[ \t]*\\([[:xdigit:]]\\{2\\}\\)[ \t]*\\([[:xdigit:]]\\{4\\}\\)[ \t]*\\(0[0-5]\\)"
               "\\([[:xdigit:] \t]*?\\)\\([[:xdigit:]][ \t]*[[:xdigit:]]\\)[ \t\r]*$")
      (1 font-lock-type-face) (2 font-lock-function-name-face) (3 font-lock-keyword-face)
      (4 font-lock-constant-face) (5 font-lock-builtin-face))
     ("^[ \t]*:.*" . font-lock-warning-face)
     ("^[ \t]*[^: \t\r\n].*" . font-lock-comment-face))
    (kvr-srec-mode
     ,@(mapcar (lambda (kind)
                 `(,(format (concat "^[ \t]*\\(S%s\\)\\([[:xdigit:]]\\{2\\}\\)\\([[:xdigit:]]\\{%d\\}\\)"
                                    "\\([[:xdigit:]]*?\\)\\([[:xdigit:]]\\{2\\}\\)[ \t\r]*$")
                            (car kind) (cdr kind))
                   (1 font-lock-keyword-face) (2 font-lock-type-face) (3 font-lock-function-name-face)
                   (4 font-lock-constant-face) (5 font-lock-builtin-face)))
               '(("[0159]" . 4) ("[268]" . 6) ("[37]" . 8)))
     ("^[ \t]*\\(?:S\\|s[[:xdigit:]]\\).*" . font-lock-warning-face)
     ("^[ \t]*[^ \t\r\n].*" . font-lock-comment-face))
    (kvr-rif-mode
     ("^[ \t]*\\(@[[:xdigit:]]+\\)[ \t\r]*$" 1 font-lock-function-name-face)
     (".*@.*" . font-lock-warning-face)
     ("\\(?://\\|#\\|--\\).*" . font-lock-warning-face)
     ("X" . font-lock-builtin-face)
     ("[[:xdigit:]]+" . font-lock-constant-face)
     ("[^ \t\r\n]" . font-lock-warning-face))
    (kvr-readmem-mode
     ("\\(?:#\\|--\\).*" . font-lock-warning-face)
     ("@[[:xdigit:]]+\\_>" . font-lock-function-name-face)
     ("[XZ]" . font-lock-builtin-face)
     ("[[:xdigit:]_]+" . font-lock-constant-face)
     ("[^ \t\r\n]" . font-lock-warning-face))
    (kvr-coe-mode
     ("\\_<memory_initialization_\\(?:radix\\|vector\\)\\_>" . font-lock-keyword-face)
     ("^[ \t]*\\(;.*\\)" 1 font-lock-comment-face)
     (";[ \t]*\\([^ \t\r\n].*\\)" 1 font-lock-comment-face)
     ("\\_<[[:xdigit:]]+\\_>" . font-lock-constant-face))
    (kvr-logisim-mode
     ("\\`\\(?:v2\\.0 raw\\|v3\\.0 hex .*\\)" . font-lock-keyword-face)
     ("#.*" . font-lock-comment-face)
     ("^[ \t]*\\([[:xdigit:]]+\\)[ \t]*:" 1 font-lock-function-name-face)
     ("\\_<\\([0-9]+\\)\\*" 1 font-lock-type-face)
     ("\\_<[[:xdigit:]]+\\_>" . font-lock-constant-face))
    (kvr-memheader-mode
     ("^[ \t]*\\(#[ \t]*Data\\)[ \t\r]*$" 1 font-lock-keyword-face)
     ("^[ \t]*\\(#[ \t]*\\(?:Format\\|Depth\\|Width\\|AddrRadix\\|DataRadix\\)\\)[ \t]*=[ \t]*\\([[:alnum:]]*\\)"
      (1 font-lock-keyword-face) (2 font-lock-type-face))
     ("^[ \t]*#.*" . font-lock-warning-face)
     ("^[ \t]*\\([[:xdigit:]]+\\)[ \t]*:" 1 font-lock-function-name-face)
     ("\\_<[[:xdigit:]]+\\_>" . font-lock-constant-face))
    (kvr-titxt-mode
     ("@[[:xdigit:]]+\\_>" . font-lock-function-name-face)
     ("\\_<q\\_>" . font-lock-keyword-face)
     ("\\_<[[:xdigit:]]\\{2\\}\\_>" . font-lock-constant-face)
     ("[^ \t\r\n]" . font-lock-warning-face)))
  "Keywords of font lock for each mode, in the order in which they count.")

(define-derived-mode kvr-mode prog-mode "Memory"
  "What the modes of memory files have in common."
  (setq-local indent-line-function #'ignore)
  (add-hook 'flymake-diagnostic-functions #'kvrmem-flymake nil t))

(defun kvrmem--set-up (mode comment)
  "Give the buffer what MODE highlights, and COMMENT, which begins one, or nil."
  (setq-local comment-start (and comment (concat comment " ")))
  (setq-local font-lock-defaults
              (list (alist-get mode kvrmem-keywords)
                    (not (eq mode 'kvr-readmem-mode)) ; it alone has comments of a syntax table
                    (not (eq mode 'kvr-srec-mode)))))

(defmacro kvrmem--define-mode (mode name &optional comment)
  "Define MODE called NAME, in which COMMENT begins a comment."
  `(define-derived-mode ,mode kvr-mode ,name
     ,(format "Mode for memory files: %s." name)
     (kvrmem--set-up ',mode ,comment)))

(kvrmem--define-mode kvr-mif-mode "MIF" "--")
(kvrmem--define-mode kvr-hex-mode "Intel HEX")
(kvrmem--define-mode kvr-rif-mode "RIF")
(kvrmem--define-mode kvr-readmem-mode "Word list" "//")
(kvrmem--define-mode kvr-coe-mode "COE" ";")
(kvrmem--define-mode kvr-srec-mode "S-records")
(kvrmem--define-mode kvr-logisim-mode "Logisim" "#")
(kvrmem--define-mode kvr-memheader-mode "MEM with header")
(kvrmem--define-mode kvr-titxt-mode "TI-TXT")

;;; The diagnostics of the tool.

(defun kvrmem--hint ()
  "The hint below the diagnostic in the line of point, or nil."
  (save-excursion
    (save-match-data
      (let (hint)
        (while (and (not hint) (zerop (forward-line)) (looking-at "  \\(?:hint: \\(.*\\)\\)?"))
          (setq hint (match-string 1)))
        hint))))

(defun kvrmem--diagnostic (source)
  "The diagnostic of buffer SOURCE that was just matched."
  (let* ((line (string-to-number (or (match-string 1) "1")))
         (column (string-to-number (or (match-string 2) "1")))
         (type (pcase (match-string 3) ("error" :error) ("warning" :warning) (_ :note)))
         (hint (kvrmem--hint))
         (text (concat (match-string 4) (and hint "\n") hint))
         (region (flymake-diag-region source line column)))
    (flymake-make-diagnostic source (car region) (cdr region) type text)))

(defun kvrmem--diagnostics (output source)
  "The diagnostics of buffer SOURCE in the buffer OUTPUT of \"kvrmem check\"."
  (with-current-buffer output
    (goto-char (point-min))
    (let (found)
      (while (re-search-forward
              (concat "^[^ \n].*?:\\(?:\\([0-9]+\\):\\([0-9]+\\):\\)? "
                      "\\(error\\|warning\\|note\\)\\(?: for [^:\n]+\\)?: \\(.*\\)")
              nil t)
        (push (kvrmem--diagnostic source) found))
      (nreverse found))))

(defvar-local kvrmem--process nil
  "The check of the buffer that is running.")

(defun kvrmem-flymake (report &rest _)
  "Check the text of the buffer with the tool and hand its diagnostics to REPORT."
  (when (process-live-p kvrmem--process)
    (kill-process kvrmem--process))
  (let* ((source (current-buffer))
         (name (or buffer-file-name (buffer-name)))
         ;; The extension determines the formats that the tool tries.
         (file (make-temp-file "kvrmem" nil (if (file-name-extension name) (file-name-extension name t) "")))
         (output (generate-new-buffer " *kvrmem*")))
    (let ((inhibit-message t))
      (write-region nil nil file nil 'silent))
    (setq kvrmem--process
          (make-process
           :name "kvrmem" :buffer output :noquery t :connection-type 'pipe
           :command `(,kvrmem-program "check" "--color" "never" ,@kvrmem-options ,file)
           :sentinel
           (lambda (process _event)
             (unless (process-live-p process)
               (delete-file file)
               (unwind-protect
                   (when (and (buffer-live-p source)
                              (eq process (buffer-local-value 'kvrmem--process source)))
                     (funcall report (kvrmem--diagnostics output source)))
                 (kill-buffer output))))))))

;; Eglot starts the language server on the user's request.
(with-eval-after-load 'eglot
  (defvar eglot-server-programs)
  (add-to-list 'eglot-server-programs
               '(kvr-mode . (lambda (&rest _) `(,kvrmem-program "lsp" ,@kvrmem-options)))))

(provide 'kvrmem)

;;; kvrmem.el ends here
