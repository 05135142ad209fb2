-- What these functions call is found in the company's schema, whoever calls them.

-- Texts. They are compared as bpchar, for which blanks at the end count for nothing; what is stored
-- keeps them, and quor_raw is the text with them.

CREATE OR REPLACE FUNCTION quor_raw(bpchar) RETURNS text IMMUTABLE STRICT PARALLEL SAFE
  RETURN textin(bpcharout($1));

-- Ends a statement with a message of its own.
CREATE OR REPLACE FUNCTION quor_fail(message text) RETURNS text LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  RAISE EXCEPTION USING MESSAGE = message, ERRCODE = 'QU001';
END $$;

-- Ends a statement with an overflow.
CREATE OR REPLACE FUNCTION quor_overflow() RETURNS void LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  RAISE EXCEPTION USING MESSAGE = 'overflow', ERRCODE = '22003';
END $$;

-- A value that does not fit its column; checks of columns call it.
CREATE OR REPLACE FUNCTION quor_misfit(value text, col text, tbl text, wrong text) RETURNS boolean
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  RAISE EXCEPTION USING ERRCODE = 'QU001',
    MESSAGE = format('Column %s of table %s cannot hold %s, which %s', col, tbl, left(value, 200), wrong);
END $$;

CREATE OR REPLACE FUNCTION quor_join(bpchar, bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN (textin(bpcharout($1)) || textin(bpcharout($2)))::bpchar;

CREATE OR REPLACE FUNCTION quor_size(bigint) RETURNS int LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF $1 < 0 THEN PERFORM quor_fail('a text cannot have a length of ' || $1); END IF;
  RETURN least($1, 1000000000);
END $$;

CREATE OR REPLACE FUNCTION quor_left(bpchar, bigint) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN left(quor_raw($1), quor_size($2))::bpchar;

CREATE OR REPLACE FUNCTION quor_right(bpchar, bigint) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN right(quor_raw($1), quor_size($2))::bpchar;

CREATE OR REPLACE FUNCTION quor_middle(bpchar, bigint, bigint) RETURNS bpchar
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
BEGIN
  IF $2 < 1 THEN PERFORM quor_fail('a text has no character ' || $2); END IF;
  RETURN substr(quor_raw($1), least($2, 1000000000)::int, quor_size($3))::bpchar;
END $$;

CREATE OR REPLACE FUNCTION quor_middle(bpchar, bigint) RETURNS bpchar
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_middle($1, $2, 1000000000);

-- A start before the text takes from the length.
CREATE OR REPLACE FUNCTION quor_substring(bpchar, bigint, bigint) RETURNS bpchar
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN substr(quor_raw($1), greatest(least($2, 1000000000), -1000000000)::int, quor_size($3))::bpchar;

CREATE OR REPLACE FUNCTION quor_length(bpchar) RETURNS bigint IMMUTABLE STRICT PARALLEL SAFE
  RETURN char_length(quor_raw($1))::bigint;

CREATE OR REPLACE FUNCTION quor_trim(bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN btrim(quor_raw($1))::bpchar;
CREATE OR REPLACE FUNCTION quor_trim_left(bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN ltrim(quor_raw($1))::bpchar;
CREATE OR REPLACE FUNCTION quor_trim_right(bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN rtrim(quor_raw($1))::bpchar;

CREATE OR REPLACE FUNCTION quor_lower(bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN lower(quor_raw($1) COLLATE pg_catalog."und-x-icu")::bpchar COLLATE quor;
CREATE OR REPLACE FUNCTION quor_upper(bpchar) RETURNS bpchar IMMUTABLE STRICT PARALLEL SAFE
  RETURN upper(quor_raw($1) COLLATE pg_catalog."und-x-icu")::bpchar COLLATE quor;

-- Without regard to case, to be compared letter by letter.
CREATE OR REPLACE FUNCTION quor_fold(bpchar) RETURNS text IMMUTABLE STRICT PARALLEL SAFE
  RETURN translate(lower(quor_raw($1) COLLATE pg_catalog."und-x-icu") COLLATE "C", 'ς', 'σ');

CREATE OR REPLACE FUNCTION quor_place(bpchar, bpchar, bigint, boolean) RETURNS bigint
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  whole text := quor_fold($1);
  found text := quor_fold($2);
  first int := greatest(least($3, 1000000000), 1);
  place int;
BEGIN
  IF found = '' COLLATE "C" THEN
    RETURN CASE WHEN $4 AND first <= char_length(whole) THEN first ELSE 0 END;
  END IF;
  place := strpos(substr(whole, first) COLLATE "C", found COLLATE "C");
  RETURN CASE WHEN place = 0 THEN 0 ELSE place + first - 1 END;
END $$;

CREATE OR REPLACE FUNCTION quor_find(bpchar, bpchar, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_place($1, $2, $3, false);
CREATE OR REPLACE FUNCTION quor_find_from(bpchar, bpchar, bigint) RETURNS bigint
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_place($1, $2, $3, true);

-- A pattern of LIKE as a regular expression over folded text; the second argument is 1 for the
-- desktop dialect's wildcards.
CREATE OR REPLACE FUNCTION quor_pattern(bpchar, bigint) RETURNS text
  LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE
  SET search_path FROM CURRENT AS $$
DECLARE
  pattern text := quor_fold($1);
  desktop boolean := $2 = 1;
  size int := char_length(pattern);
  result text := '^';
  i int := 1;
  k int;
  final int;
  body text;
  ranges text;
  negated boolean;
  c text;
BEGIN
  WHILE i <= size LOOP
    c := substr(pattern, i, 1);
    final := CASE WHEN c = '[' COLLATE "C"
                  THEN strpos(substr(pattern, i + 1) COLLATE "C", ']') ELSE 0 END;
    IF final > 0 THEN
      body := substr(pattern, i + 1, final - 1);
      negated := char_length(body) > 1 AND
                 left(body, 1) = (CASE WHEN desktop THEN '!' ELSE '^' END) COLLATE "C";
      IF negated THEN body := substr(body, 2); END IF;
      ranges := '';
      k := 1;
      WHILE k <= char_length(body) LOOP
        IF k + 2 <= char_length(body) AND substr(body, k + 1, 1) = '-' COLLATE "C" THEN
          IF ascii(substr(body, k, 1)) <= ascii(substr(body, k + 2, 1)) THEN
            ranges := ranges || quor_code(substr(body, k, 1)) || '-' || quor_code(substr(body, k + 2, 1));
          END IF;
          k := k + 3;
        ELSE
          ranges := ranges || quor_code(substr(body, k, 1));
          k := k + 1;
        END IF;
      END LOOP;
      -- Nothing is in an empty set.
      IF ranges = '' COLLATE "C" THEN
        ranges := '\U00000001-\U0010ffff';
        negated := NOT negated;
      END IF;
      result := result || CASE WHEN negated THEN '[^' ELSE '[' END || ranges || ']';
      i := i + final + 1;
      CONTINUE;
    END IF;
    i := i + 1;
    result := result || CASE
      WHEN c = '%' COLLATE "C" OR (desktop AND c = '*' COLLATE "C") THEN '.*'
      WHEN c = '_' COLLATE "C" OR (desktop AND c = '?' COLLATE "C") THEN '.'
      WHEN desktop AND c = '#' COLLATE "C" THEN '[0-9]'
      ELSE quor_code(c) END;
  END LOOP;
  RETURN result || '$';
END $$;

CREATE OR REPLACE FUNCTION quor_code(text) RETURNS text IMMUTABLE STRICT PARALLEL SAFE
  RETURN '\U' || lpad(to_hex(ascii($1)), 8, '0');

-- Blanks at the end of the text count for nothing, except where the pattern asks for them.
CREATE OR REPLACE FUNCTION quor_like(bpchar, bpchar, bigint) RETURNS boolean
  IMMUTABLE STRICT PARALLEL SAFE
  RETURN quor_fold($1) COLLATE "C" ~ quor_pattern($2, $3)
      OR rtrim(quor_fold($1)) COLLATE "C" ~ quor_pattern($2, $3);
